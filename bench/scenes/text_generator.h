// Generators of the scenes that the benchmarks read, in the VSA text format or in the format of a
// peer. The same seed gives the same bytes on every machine.
//
// Each text comes with the values that a reader must find in it, so that a benchmark can check the
// result before it measures. They are computed from the generated values, without the reader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "bench/scenes/scene_writer.h"

namespace bench {

// What a read of the whole text must find.
struct Expected {
  size_t nodes = 0;
  size_t statements = 0;  // declarations, assignments and comments
  size_t comments = 0;
  size_t inputs = 0;
  size_t references = 0;
  size_t connections = 0;
  size_t strings = 0;
  size_t stringBytes = 0;     // of all strings, without escapes
  size_t numbers = 0;         // components of all buffers
  size_t elementBytes = 0;    // memory of all buffers' elements
  size_t largestLiteral = 0;  // characters of the longest number list or compressed block
  uint64_t bufferSum = 0;     // sum of all components' bit patterns (float, int32) or bytes
  uint64_t scalarSum = 0;     // sum over scalars: integers, bit patterns of doubles, 1 for true
};

struct Text {
  std::string text;
  Expected expected;
};

// Meshes with points, normals, uvs and indices, about `bytes` of VSA text.
Text geo(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Small nodes of a declaration and 8 scalar inputs, `statements` in total (rounded up to whole
// nodes).
Text nodes(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// The same with a comment, a matrix, a reference and a connection for each node: some 46 bytes per
// statement.
Text mixed(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// Nodes of a declaration, a reference and a connection, both to later nodes.
Text links(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// Strings of all lengths and comments.
Text text(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Strings of 20 to 200 characters with few escapes, and a comment before each node.
Text shortText(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Images as compressed buffers. `bytes` is the uncompressed size.
Text compressed(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Nodes with one buffer of LIST_LENGTH numbers each (the last one has the rest), float[n] or
// int32[n], for comparisons with loops that only convert numbers.
constexpr size_t LIST_LENGTH = 100'000;
Text floatLists(size_t count, uint64_t seed = 1);
Text intLists(size_t count, uint64_t seed = 1);

// All numbers of floatLists and intLists in one list.
NumberList floatNumbers(size_t count, uint64_t seed = 1);
NumberList intNumbers(size_t count, uint64_t seed = 1);

// The pixels of a texture with gradients, edges and noise, 4 bytes per pixel.
std::string imageBytes(size_t bytes, uint64_t seed);

// Compresses the bytes at zlib's default level.
std::string zlibStream(const std::string& bytes);

}  // namespace bench
