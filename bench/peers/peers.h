// The readers, writers and loops with which the reader and the writer are compared. Each function
// returns a candidate. Most functions first run the work once and check the result. The arguments
// must outlive the candidates.
#pragma once

#include <string>
#include <vector>

#include "bench/measure/comparison.h"
#include "bench/scenes/text_generator.h"

namespace bench {

// Returns the candidate of simdjson On-Demand. It fills a scene of names, inputs, values and
// vectors of numbers. All reads use the same parser, as the documentation of simdjson recommends.
Candidate simdjsonReader(const Text& compactJson);

// Returns the candidate of RapidJSON. It reads either format of JSON into a DOM.
Candidate rapidjsonReader(const Text& json, const char* name = "RapidJSON DOM");

// Returns the candidate of osgDB's .osgt reader. Writes the text to a file at `path` first.
Candidate osgReader(const Text& osgt, const std::string& path);

// Returns the candidate of Coin. It calls SoDB::readAll for a text in memory.
Candidate coinReader(const Text& iv);

// Returns the candidate of tinyobjloader. It calls tinyobj::LoadObj. Writes the text to a file at
// `path` first.
Candidate objReader(const Text& obj, const std::string& path);

// These functions return candidates that only convert numbers that are separated by blanks. The
// memory is already allocated.
Candidate standardFloatLoop(const NumberList& numbers);
Candidate fastFloatLoop(const NumberList& numbers);
Candidate standardIntLoop(const NumberList& numbers);

// These functions return candidates that decompress a zlib stream to `bytes`. The time includes the
// allocation.
Candidate zlibInflate(const std::string& stream, const std::string& bytes);
Candidate libdeflateInflate(const std::string& stream, const std::string& bytes);

// These functions return candidates that only print numbers, divided by blanks or commas. The
// memory is already allocated.
Candidate toCharsWriter(const std::vector<float>& numbers);
Candidate toCharsWriter(const std::vector<double>& numbers);
Candidate rapidjsonWriter(const std::vector<float>& numbers);
Candidate rapidjsonWriter(const std::vector<double>& numbers);

// Returns the candidate of osgDB's .osgt writer. It writes to a string stream. Writes the text to a
// file at `path` first.
Candidate osgWriter(const Text& osgt, const std::string& path);

// Returns a candidate that compresses the bytes with zlib at its default level.
Candidate zlibDeflate(const std::string& bytes);

// Returns a candidate that copies the text to new memory.
Candidate copyLoop(const std::string& text);

// Writes `content` to the file at `path` and replaces an existing file. Throws std::runtime_error
// on failure.
void writeFile(const std::string& path, const std::string& content);

}  // namespace bench
