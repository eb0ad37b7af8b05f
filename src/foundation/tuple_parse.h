// String::parse for tuples: vectors, positions, quaternions, matrices and colours, written as
// numbers between blanks in the storage order of their type.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "foundation/math_types.h"
#include "foundation/number_text.h"
#include "foundation/string.h"

namespace zn {

namespace detail {

/// The next word of `text` at or after `at` (words are the runs between blanks); empty at the end.
inline std::string_view nextWord(std::string_view text, std::size_t& at) {
  while (at < text.size() && text[at] == ' ') ++at;
  const std::size_t start = at;
  while (at < text.size() && text[at] != ' ') ++at;
  return text.substr(start, at - start);
}

}  // namespace detail

/// Converts the first `count` words of `text` into the components of `out`; further words are
/// ignored. Fewer words: false, and `out` is left alone. A word that is no real makes the result
/// false, but every word is converted. `count` is at most the number of components of T.
template <class T>
bool String::parse(const String& text, unsigned long long count, T& out) {
  constexpr std::size_t MOST = sizeof(T::components) / sizeof(double);
  std::array<std::string_view, MOST> words;
  if (count > MOST) return false;
  std::size_t at = 0;
  for (std::size_t i = 0; i < count; ++i) {
    words[i] = detail::nextWord(text.view(), at);
    if (words[i].empty()) return false;
  }
  bool ok = true;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string_view word = words[i];
    ok = realFromText(word.data(), word.data() + word.size(), out.components[i]) && ok;
  }
  return ok;
}

/// A colour of four numbers, or of three and then alpha 1. Four words of which the last is no
/// number are taken as a colour of three.
template <class Component, class Colour>
bool String::parse(const String& text, Colour& out) {
  if (parse(text, 4, out)) return true;
  if (!parse(text, 3, out)) return false;
  out.components[3] = 1;
  return true;
}

}  // namespace zn
