// Functions about digits that do not depend on the locale.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vsa_tools {

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Returns whether the comma at `comma` stands for a decimal point, as in "-1,5" and "1,5e3". With
/// a point instead, the text around the comma is one number. That is not so in "1.5,2" and "1,5,2".
inline bool isDecimalComma(std::string_view text, std::size_t comma) {
  constexpr std::string_view CHARACTERS = "0123456789.,eE+-";
  const std::size_t begin = text.find_last_not_of(CHARACTERS, comma) + 1;
  const std::size_t end = std::min(text.find_first_not_of(CHARACTERS, comma), text.size());
  std::string_view whole = text.substr(begin, comma - begin);
  const std::string_view fraction = text.substr(comma + 1, end - comma - 1);
  if (whole.starts_with('-') || whole.starts_with('+')) whole.remove_prefix(1);
  return !whole.empty() && std::all_of(whole.begin(), whole.end(), isDigit) && !fraction.empty() &&
         isDigit(fraction.front()) && fraction.find_first_of(".,") == std::string_view::npos;
}

}  // namespace vsa_tools
