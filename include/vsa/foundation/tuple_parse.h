// Parses tuples: vectors, positions, quaternions, matrices and colours. A text of a tuple has its
// numbers in the storage order of the type, separated by blanks.
#pragma once

#include <cstddef>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/foundation/math_types.h>
#include <vsa/foundation/string.h>

namespace zn {

/// The number of components of the largest tuple, a 4 by 4 matrix.
inline constexpr std::size_t MAX_COMPONENTS = 16;

/// Converts the first `count` words of `text` and stores them in `out[0..count)`. Blanks separate
/// words. Further words are ignored. If there are fewer words, or if `count` is greater than
/// MAX_COMPONENTS, the function returns false and does not change `out`. If a word is not a real,
/// it returns false after it has converted the other words. The byte after the text must be
/// readable, such as the NUL of a String, because the function may read it, too.
VSA_API bool parseTuple(std::string_view text, std::size_t count, double* out);

/// Converts a colour and stores it in `out[0..4)`. The fourth word is the alpha. If there is no
/// fourth word, or if it is not a number, the alpha is 1. The result and the other rules are those
/// of parseTuple for the first three words.
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
