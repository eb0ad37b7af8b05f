// The reader as the benchmarks call it: reads into a new scene, and checks of the scene against the
// values that the generator put into the text.
#pragma once

#include <string>
#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>
#include "bench/measure/comparison.h"
#include "bench/scenes/text_generator.h"

namespace bench {

// String and File: the plain entry points. Text and Path: the corresponding functions of the public
// API.
enum class Route { String, File, Text, Path };

// All throw std::runtime_error if the text is not read completely.
void readString(zn::korvo_sdk::Scene& scene, const zn::String& text);
void readFile(zn::korvo_sdk::Scene& scene, const std::string& path);
void readText(zn::korvo_sdk::Scene& scene, std::string_view text);
void readPath(zn::korvo_sdk::Scene& scene, const std::string& path);

// Throws std::runtime_error if the scene differs from `expected`.
void requireScene(const zn::korvo_sdk::Scene& scene, const Expected& expected);

// A candidate whose `read` times `fill` on a new scene.
Candidate sceneCandidate(std::string name, std::function<void(zn::korvo_sdk::Scene&)> fill);

// Candidates that read the text, or the file at `path` with the same content. They check the result
// of a first read.
Candidate stringReader(const Text& vsa);
Candidate fileReader(const Text& vsa, const std::string& path);
// The same through the public API.
Candidate textReader(const Text& vsa);
Candidate pathReader(const Text& vsa, const std::string& path);

// Candidates for single stages: conversion of a list of numbers, and decompression of a zlib
// stream.
Candidate floatRun(const NumberList& numbers);
Candidate intRun(const NumberList& numbers);
Candidate ourInflate(const std::string& stream, const std::string& bytes);

}  // namespace bench
