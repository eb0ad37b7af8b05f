// Tuples: vectors, positions, quaternions, matrices and colours, written as numbers separated by
// blanks, in the storage order of their type.
#pragma once

#include <cstddef>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/foundation/math_types.h>
#include <vsa/foundation/string.h>

namespace zn {

/// Components of the largest tuple, a 4 by 4 matrix.
inline constexpr std::size_t MAX_COMPONENTS = 16;

/// Converts the first `count` words of `text` (words are separated by blanks) into `out[0..count)`;
/// further words are ignored. With fewer words, or a `count` above MAX_COMPONENTS: false, and `out`
/// is unchanged. A word that is not a real makes the result false, but all words are converted. One
/// byte behind the text must be readable.
VSA_API bool parseTuple(std::string_view text, std::size_t count, double* out);

/// A colour of four numbers, or of three with alpha 1, into `out[0..4)`. When the fourth word is
/// not a number, the first three are the colour.
VSA_API bool parseColour(std::string_view text, double* out);

template <class T>
bool String::parse(const String& text, unsigned long long count, T& out) {
  if (count > sizeof(out.components) / sizeof(double)) return false;
  return parseTuple(text.view(), static_cast<std::size_t>(count), out.components);
}

template <class Component, class Colour>
bool String::parse(const String& text, Colour& out) {
  return parseColour(text.view(), out.components);
}

}  // namespace zn
