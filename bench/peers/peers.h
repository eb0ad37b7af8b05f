// The readers and the bare loops that the reader is held against, one function each. Every function
// reads once, checks what it found, and returns a contender that is ready to be timed. The texts
// must outlive the contenders.
#pragma once

#include <string>

#include "bench/peers/contest.h"
#include "bench/scenes/text_generator.h"

namespace bench {

// simdjson On-Demand, filling a scene of the same shape: names, inputs, values, vectors of numbers.
// Its parser is kept from read to read, as its makers advise.
Contender simdjsonReader(const Text& compactJson);

// RapidJSON's document, of either form of JSON.
Contender rapidjsonReader(const Text& json, const char* name = "RapidJSON DOM");

// osgDB's reader of .osgt files. The text is written to a file at `path` first.
Contender osgReader(const Text& osgt, const std::string& path);

// Coin's SoDB::readAll, from memory.
Contender coinReader(const Text& iv);

// tinyobj::LoadObj, from a file at `path`.
Contender objReader(const Text& obj, const std::string& path);

// Bare loops over numbers separated by blanks, into memory that is there already.
Contender standardFloatLoop(const NumberList& numbers);
Contender fastFloatLoop(const NumberList& numbers);
Contender standardIntLoop(const NumberList& numbers);

// Inflating a zlib stream to `bytes`, into memory that is allocated within the time.
Contender zlibInflate(const std::string& stream, const std::string& bytes);
Contender libdeflateInflate(const std::string& stream, const std::string& bytes);

// Copying the text once into fresh memory.
Contender copyLoop(const std::string& text);

// Replaces the file at `path`.
void writeFile(const std::string& path, const std::string& content);

}  // namespace bench
