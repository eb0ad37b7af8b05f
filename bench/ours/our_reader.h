// Calls the reader for the benchmarks: reads texts into new scenes, and checks the scenes against
// the values that the generator has counted.
#pragma once

#include <string>
#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>
#include "bench/measure/comparison.h"
#include "bench/scenes/text_generator.h"

namespace bench {

// How a text is read. String and File are the plain entry points. Text and Path are the
// corresponding functions of the public API.
enum class Route { String, File, Text, Path };

// These functions read a text into the scene. They throw std::runtime_error if the entry point
// reports a failure.
void readString(zn::korvo_sdk::Scene& scene, const zn::String& text);
void readFile(zn::korvo_sdk::Scene& scene, const std::string& path);
void readText(zn::korvo_sdk::Scene& scene, std::string_view text);
void readPath(zn::korvo_sdk::Scene& scene, const std::string& path);

// Throws std::runtime_error if a count or sum of the scene differs from `expected`.
void requireScene(const zn::korvo_sdk::Scene& scene, const Expected& expected);

// Returns a candidate that measures the time of `fill` for a new scene.
Candidate sceneCandidate(std::string name, std::function<void(zn::korvo_sdk::Scene&)> fill);

// These functions return candidates that read the text, or the file at `path` with the same
// content. Each function reads once first and checks the result. The arguments of all these
// functions must outlive the candidates.
Candidate stringReader(const Text& vsa);
Candidate fileReader(const Text& vsa, const std::string& path);
// Like the functions above, through the public API.
Candidate textReader(const Text& vsa);
Candidate pathReader(const Text& vsa, const std::string& path);

// These functions return candidates for single stages: the conversion of a list of numbers, and the
// decompression of a zlib stream.
Candidate floatRun(const NumberList& numbers);
Candidate intRun(const NumberList& numbers);
Candidate ourInflate(const std::string& stream, const std::string& bytes);

}  // namespace bench
