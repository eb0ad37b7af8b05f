// Parses tuples: vectors, positions, quaternions, matrices and colours, written as numbers
// separated by blanks, in the storage order of their type.
#pragma once

#include <cstddef>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/foundation/math_types.h>
#include <vsa/foundation/string.h>

namespace zn {

/// The number of components of the largest tuple, a 4 by 4 matrix.
inline constexpr std::size_t MAX_COMPONENTS = 16;

/// Converts the first `count` words of `text` into `out[0..count)`. Words are separated by blanks.
/// Ignores further words. If there are fewer words, or if `count` is greater than MAX_COMPONENTS,
/// returns false and leaves `out` unchanged. If a word is not a real, returns false, but converts
/// the other words. One byte after the text must be readable.
VSA_API bool parseTuple(std::string_view text, std::size_t count, double* out);

/// Converts a colour of four numbers, or of three numbers with alpha 1, into `out[0..4)`. If the
/// fourth word is not a number, uses the first three.
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
