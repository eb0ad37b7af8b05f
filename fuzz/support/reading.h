// What the fuzzers that read whole texts have in common.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tools/scene_text/read_outcome.h"

namespace vsa_fuzz {

/// Makes the declared node type known, and with the last of its objects frees the literals that
/// were left behind.
class Surroundings {
 public:
  Surroundings();
  ~Surroundings();
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;
};

/// A scene whose limits a short text can reach.
class FuzzScene : private Surroundings {
 public:
  FuzzScene();

  zn::korvo_sdk::Scene scene;
};

/// What came of one read.
struct Reading {
  vsa_tools::ReadOutcome outcome;
  zn::korvo_sdk::impl::ReadReport report;
};

/// Reads `text` and counts the messages.
Reading readFromString(zn::korvo_sdk::Scene& scene, std::string_view text);
/// The same from a File that delivers `block` bytes at a time, 0 for as many as it is asked for.
Reading readFromFile(zn::korvo_sdk::Scene& scene, std::string_view text, std::size_t block);

/// Result, log and scene as text, which takes a look at everything that the scene holds.
std::string shown(const Reading& reading, const zn::korvo_sdk::Scene& scene);

}  // namespace vsa_fuzz
