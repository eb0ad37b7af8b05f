// Hexadecimal digits. Internal.
#pragma once

namespace zn::detail {

/// The digit for each value. Letters are in lower case.
inline constexpr char HEX_DIGITS[] = "0123456789abcdef";

/// The value of a digit in either case, or NOT_A_DIGIT.
inline constexpr unsigned NOT_A_DIGIT = 16;
constexpr unsigned hexValue(char c) noexcept {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
  return NOT_A_DIGIT;
}

}  // namespace zn::detail
