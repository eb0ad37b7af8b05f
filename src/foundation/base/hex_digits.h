// Hexadecimal digits. Internal.
#pragma once

namespace zn::detail {

/// The digits for the values 0 to 15. Letters are in lower case.
inline constexpr char HEX_DIGITS[] = "0123456789abcdef";

/// hexValue returns the value of a digit in upper or lower case. For any other character it returns
/// NOT_A_DIGIT.
inline constexpr unsigned NOT_A_DIGIT = 16;
constexpr unsigned hexValue(char c) noexcept {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
  return NOT_A_DIGIT;
}

}  // namespace zn::detail
