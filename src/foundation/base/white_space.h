// Removes white space or other characters around a text. Internal.
#pragma once

#include <string_view>

#include <vsa/foundation/char_class.h>

namespace zn::detail {

/// Returns `text` without the white space at its start if `leading` is true, and without the white
/// space at its end if `trailing` is true.
constexpr std::string_view trimmed(std::string_view text, bool leading = true,
                                   bool trailing = true) noexcept {
  const auto isSpace = [](char c) { return char_class::is(c, char_class::SPACE); };
  while (leading && !text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (trailing && !text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

/// Returns `text` without the characters at its start and at its end that are in `chars`.
constexpr std::string_view trimmedChars(std::string_view text, std::string_view chars) noexcept {
  while (!text.empty() && chars.find(text.front()) != chars.npos) text.remove_prefix(1);
  while (!text.empty() && chars.find(text.back()) != chars.npos) text.remove_suffix(1);
  return text;
}

}  // namespace zn::detail
