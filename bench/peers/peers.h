// The readers and loops with which the reader is compared. Each function reads once, checks the
// result, and returns a candidate. The texts must outlive the candidates.
#pragma once

#include <string>
#include <vector>

#include "bench/measure/comparison.h"
#include "bench/scenes/text_generator.h"

namespace bench {

// simdjson On-Demand, which fills a scene of names, inputs, values and vectors of numbers. The
// parser is reused for all reads, as its documentation recommends.
Candidate simdjsonReader(const Text& compactJson);

// The DOM of RapidJSON, for both formats of JSON.
Candidate rapidjsonReader(const Text& json, const char* name = "RapidJSON DOM");

// The .osgt reader of osgDB. Writes the text to a file at `path` first.
Candidate osgReader(const Text& osgt, const std::string& path);

// Coin's SoDB::readAll, from memory.
Candidate coinReader(const Text& iv);

// tinyobj::LoadObj. Writes the text to a file at `path` first.
Candidate objReader(const Text& obj, const std::string& path);

// Loops that only convert numbers separated by blanks, into allocated memory.
Candidate standardFloatLoop(const NumberList& numbers);
Candidate fastFloatLoop(const NumberList& numbers);
Candidate standardIntLoop(const NumberList& numbers);

// Decompression of a zlib stream to `bytes`. The time includes the allocation.
Candidate zlibInflate(const std::string& stream, const std::string& bytes);
Candidate libdeflateInflate(const std::string& stream, const std::string& bytes);

// Loops that only print numbers, each followed by a blank or a comma, into memory that is already
// allocated.
Candidate toCharsWriter(const std::vector<float>& numbers);
Candidate toCharsWriter(const std::vector<double>& numbers);
Candidate rapidjsonWriter(const std::vector<float>& numbers);
Candidate rapidjsonWriter(const std::vector<double>& numbers);

// The .osgt writer of osgDB, into a string stream. Writes the text to a file at `path` first.
Candidate osgWriter(const Text& osgt, const std::string& path);

// Compression of the bytes by zlib at its default level.
Candidate zlibDeflate(const std::string& bytes);

// A copy of the text into new memory.
Candidate copyLoop(const std::string& text);

// Replaces the file at `path`.
void writeFile(const std::string& path, const std::string& content);

}  // namespace bench
