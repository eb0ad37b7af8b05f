// The reader under measurement, as the benchmarks call it: whole reads into a fresh scene, and the
// scene held against what the generator put into the text.
#pragma once

#include <string>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>
#include "bench/peers/contest.h"
#include "bench/scenes/text_generator.h"

namespace bench {

enum class Route { String, File };

// Throw std::runtime_error when the reader does not read the whole text.
void readString(zn::korvo_sdk::Scene& scene, const zn::String& text);
void readFile(zn::korvo_sdk::Scene& scene, const std::string& path);

// Throws std::runtime_error at the first figure of the scene that is not the expected one.
void mustHold(const zn::korvo_sdk::Scene& scene, const Expected& expected);

// Read and check once, then stand ready to be timed. The file at `path` must hold the text.
Contender stringReader(const Text& vsa);
Contender fileReader(const Text& vsa, const std::string& path);

// The stages that have a peer of their own: a list's numbers into element memory, and inflate.
Contender floatRun(const NumberList& numbers);
Contender intRun(const NumberList& numbers);
Contender ourInflate(const std::string& stream, const std::string& bytes);

}  // namespace bench
