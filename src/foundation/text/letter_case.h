// Converts letters to lower case, and compares words in any letter case. Applies to A to Z only and
// is independent of the locale. Internal.
#pragma once

#include <cstddef>
#include <string_view>

namespace zn {

/// The letter `c` in lower case (A to Z only).
constexpr char toLowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Whether `text` is `word` in any letter case; `word` is given in lower case.
constexpr bool isWord(std::string_view text, std::string_view word) {
  if (text.size() != word.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (toLowerCase(text[i]) != word[i]) return false;
  }
  return true;
}

}  // namespace zn
