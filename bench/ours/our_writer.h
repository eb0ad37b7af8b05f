// Calls the writer for the benchmarks.
#pragma once

#include <memory>
#include <string>

#include <vsa/model/scene.h>
#include "bench/measure/comparison.h"
#include "bench/scenes/text_generator.h"

namespace bench {

/// Returns the scene of a text.
std::shared_ptr<zn::korvo_sdk::Scene> sceneOf(const Text& vsa);

/// These functions return a scene with the numbers in buffers of LIST_LENGTH elements, one in each
/// node. The last buffer may be shorter.
std::shared_ptr<zn::korvo_sdk::Scene> floatScene(const std::vector<float>& numbers);
std::shared_ptr<zn::korvo_sdk::Scene> doubleScene(const std::vector<double>& numbers);

// These functions return candidates that write the whole scene: sinkWriter to a sink that counts
// the bytes, textWriter to a string. Each function writes once first, reads the text and writes the
// second scene: both texts must be equal.
Candidate sinkWriter(const char* name, std::shared_ptr<zn::korvo_sdk::Scene> scene);
Candidate textWriter(const char* name, std::shared_ptr<zn::korvo_sdk::Scene> scene);

/// Returns a candidate that compresses with our encoder of zlib streams. The bytes must outlive the
/// candidate.
Candidate ourDeflate(const std::string& bytes);
/// Returns the size of the stream that ourDeflate creates.
std::size_t ourDeflatedSize(const std::string& bytes);

/// These functions convert the list to numbers.
std::vector<float> floatsOf(const NumberList& numbers);
std::vector<double> doublesOf(const NumberList& numbers);

}  // namespace bench
