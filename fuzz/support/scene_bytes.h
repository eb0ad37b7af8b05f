// The content of a scene as bytes: what a dump shows, without formatting it, and the bits of each
// NaN. The bytes are created much faster than a dump. A fuzzer can therefore access everything
// after each read, and compare two scenes.
#pragma once

#include <string>
#include <string_view>

#include <vsa/model/scene.h>
#include "fuzz/support/fuzz_scene.h"

namespace vsa_fuzz {

/// Returns the result, the log and the scene as bytes. Two reads with equal bytes have equal dumps.
/// Accesses everything in the scene.
std::string bytesOf(const FuzzRead& read, const zn::korvo_sdk::Scene& scene);

/// A scene and how it was read. Both must exist during the comparison.
struct ReadScene {
  const FuzzRead& read;
  const zn::korvo_sdk::Scene& scene;
};

/// Fails if the dumps of the two scenes differ, and prints both dumps. `about` names the compared
/// result in the message.
void checkSameScene(const ReadScene& expected, const ReadScene& found, std::string_view about);

}  // namespace vsa_fuzz
