// Generates the scenes that the benchmarks read, in the VSA text format or in the format of a peer.
// The same seed gives the same bytes, as far as the math functions and zlib give the same results.
//
// A generator also returns the values that a reader must find in the text, so that a benchmark can
// check its result before it measures. The generator computes these values from the generated
// numbers without the reader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "bench/scenes/scene_writer.h"

namespace bench {

// The values that a read of the whole text must find.
struct Expected {
  size_t nodes = 0;
  // The number of declarations, assignments and comments.
  size_t statements = 0;
  size_t comments = 0;
  size_t inputs = 0;
  size_t references = 0;
  size_t connections = 0;
  size_t strings = 0;
  // The size in bytes of all strings as values, without quotes and with each escape sequence
  // replaced by its character.
  size_t stringBytes = 0;
  // The number of components of all buffers.
  size_t numbers = 0;
  // The size of the elements of all buffers in memory.
  size_t elementBytes = 0;
  // The number of characters of the longest number list or compressed text.
  size_t largestLiteral = 0;
  // The sum of all components of buffers. A float counts as its bit pattern, an int32 as an
  // unsigned number, and an image as its bytes.
  uint64_t bufferSum = 0;
  // The sum of all scalars. An integer counts as an unsigned number, a real or a component of a
  // tuple as the bit pattern of the double, and true as 1.
  uint64_t scalarSum = 0;
};

struct Text {
  std::string text;
  Expected expected;
};

// Meshes with points, normals, uvs and indices. The text has about `bytes` bytes in VSA.
Text geo(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Small nodes. Each node has a declaration and 8 assignments of scalars. There are `statements`
// statements, rounded up to whole nodes, and in VSA two comments.
Text nodes(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// Like `nodes`, with a comment, a matrix, a reference and a connection for each node. There are
// about `statements` statements. The text has about 46 bytes per statement.
Text mixed(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// Nodes with a declaration, a reference and a connection each. Both links refer to later nodes. The
// last node has no links. There are about `statements` statements.
Text links(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// Nodes with a declaration and 8 assignments to elements of an array, such as `.weights[3] = 1;`.
// There are `statements` statements, rounded up to whole nodes, and in VSA two comments.
Text indexed(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// Nodes with strings of about 8 to 2000 characters, and comments. The text has about `bytes` bytes.
Text text(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Nodes with strings of about 20 to 200 characters with few escape sequences, and a comment before
// each node. The text has about `bytes` bytes.
Text shortText(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Images in compressed buffers. `bytes` is the uncompressed size.
Text compressed(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Nodes with one buffer of LIST_LENGTH numbers each, float[n] or int32[n]. The last buffer may be
// shorter. These texts are compared with loops that only convert numbers.
constexpr size_t LIST_LENGTH = 100'000;
Text floatLists(size_t count, uint64_t seed = 1);
Text intLists(size_t count, uint64_t seed = 1);

// All numbers of floatLists or intLists in one list.
NumberList floatNumbers(size_t count, uint64_t seed = 1);
NumberList intNumbers(size_t count, uint64_t seed = 1);

// Returns the pixels of a texture with gradients, edges and noise, 4 bytes per pixel.
std::string imageBytes(size_t bytes, uint64_t seed);

// Compresses the bytes at zlib's default level.
std::string zlibStream(const std::string& bytes);

}  // namespace bench
