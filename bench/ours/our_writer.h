// The writer as the benchmarks call it.
#pragma once

#include <memory>
#include <string>

#include <vsa/model/scene.h>
#include "bench/measure/comparison.h"
#include "bench/scenes/text_generator.h"

namespace bench {

/// The scene of a text.
std::shared_ptr<zn::korvo_sdk::Scene> sceneOf(const Text& vsa);

/// A scene with the numbers as buffers of LIST_LENGTH floats, and of doubles.
std::shared_ptr<zn::korvo_sdk::Scene> floatScene(const std::vector<float>& numbers);
std::shared_ptr<zn::korvo_sdk::Scene> doubleScene(const std::vector<double>& numbers);

// Candidates that write the whole scene: to a sink that counts the bytes, and into a string. They
// read a first result back to check it.
Candidate sinkWriter(const char* name, std::shared_ptr<zn::korvo_sdk::Scene> scene);
Candidate textWriter(const char* name, std::shared_ptr<zn::korvo_sdk::Scene> scene);

/// Our encoder of zlib streams. The bytes must outlive the candidate.
Candidate ourDeflate(const std::string& bytes);
/// The size of the stream that ourDeflate creates.
std::size_t ourDeflatedSize(const std::string& bytes);

/// The numbers of a list.
std::vector<float> floatsOf(const NumberList& numbers);
std::vector<double> doublesOf(const NumberList& numbers);

}  // namespace bench
