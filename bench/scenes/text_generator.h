// The scenes that the benchmarks read, made up from a seed: the same call gives the same bytes on
// every machine, in the VSA text format or in a peer's.
//
// Beside the text comes what a reader must find in it, so that a benchmark can check before it
// measures. Those figures come from the generator's own values, never from the reader under test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "bench/scenes/scene_writer.h"

namespace bench {

// What a whole read of the text must find.
struct Expected {
  size_t nodes = 0;
  size_t statements = 0;  // declarations, assignments and comments
  size_t comments = 0;
  size_t inputs = 0;
  size_t references = 0;
  size_t connections = 0;
  size_t strings = 0;
  size_t stringBytes = 0;     // of all strings, unescaped
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

// Meshes with points, normals, uvs and indices, until about `bytes` of VSA text are written.
Text geo(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Small nodes: a declaration and 8 mixed scalar inputs each, `statements` in all (rounded up to
// whole nodes).
Text nodes(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// A declaration, a reference and a connection a node, both to nodes further down.
Text links(size_t statements, Format format = Format::Vsa, uint64_t seed = 1);

// Strings of all lengths and comments.
Text text(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Image bytes as compressed buffers; `bytes` counts the pixels' bytes, not the text's.
Text compressed(size_t bytes, Format format = Format::Vsa, uint64_t seed = 1);

// Nodes with one list of numbers each, float[n] or int32[n], LIST_LENGTH of them a list and the
// rest in the last: what the bare number loops are held against.
constexpr size_t LIST_LENGTH = 100'000;
Text floatLists(size_t count, uint64_t seed = 1);
Text intLists(size_t count, uint64_t seed = 1);

// All numbers of floatLists and intLists in one list.
NumberList floatNumbers(size_t count, uint64_t seed = 1);
NumberList intNumbers(size_t count, uint64_t seed = 1);

// The bytes of an image as textures have them: gradients, edges, noise. 4 bytes a pixel.
std::string imageBytes(size_t bytes, uint64_t seed);

// A zlib stream of bytes at the usual level.
std::string zlibStream(const std::string& bytes);

}  // namespace bench
