// Tuples: vectors, positions, quaternions, matrices and colours, written as numbers between blanks
// in the storage order of their type.
#pragma once

#include <cstddef>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/foundation/math_types.h>
#include <vsa/foundation/string.h>

namespace zn {

/// The largest tuple: a 4 by 4 matrix.
inline constexpr std::size_t MOST_COMPONENTS = 16;

/// Converts the first `count` words of `text` (words are the runs between blanks) into
/// `out[0..count)`; further words are ignored. Fewer words, or a `count` above MOST_COMPONENTS:
/// false, and `out` is left alone. A word that is no real makes the result false, but every word is
/// converted. One readable byte must stand behind the text.
VSA_API bool parseTuple(std::string_view text, std::size_t count, double* out);

/// A colour of four numbers, or of three and then alpha 1, into `out[0..4)`. Four words of which
/// the last is no number are taken as a colour of three.
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
