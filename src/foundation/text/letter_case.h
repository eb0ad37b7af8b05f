// Converts letters to lower case and compares words in any letter case. Internal.
//
// Only the letters A to Z are converted. The functions are independent of the locale.
#pragma once

#include <cstddef>
#include <string_view>

namespace zn {

/// Returns `c` in lower case.
constexpr char toLowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Whether `text` equals `word` in any letter case. `word` must be in lower case.
constexpr bool isWord(std::string_view text, std::string_view word) {
  if (text.size() != word.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (toLowerCase(text[i]) != word[i]) return false;
  }
  return true;
}

}  // namespace zn
