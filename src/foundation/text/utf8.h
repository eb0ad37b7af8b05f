// Encodes characters in UTF-8 (RFC 3629), and recognises the surrogates of UTF-16. Internal.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zn::detail {

/// The maximum number of bytes of a character.
inline constexpr std::size_t MAX_UTF8_BYTES = 4;

/// Writes the character to `to` and returns the end of its bytes. `code` must be at most 0x10FFFF.
inline char* appendUtf8(char* to, std::uint32_t code) noexcept {
  const auto append = [&to](std::uint32_t byte) { *to++ = static_cast<char>(byte); };
  if (code < 0x80) {
    append(code);
    return to;
  }
  if (code < 0x800) {
    append(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    append(0xE0 | code >> 12);
    append(0x80 | (code >> 6 & 0x3F));
  } else {
    append(0xF0 | code >> 18);
    append(0x80 | (code >> 12 & 0x3F));
    append(0x80 | (code >> 6 & 0x3F));
  }
  append(0x80 | (code & 0x3F));
  return to;
}

/// Whether the code unit is the first or the second half of a surrogate pair.
constexpr bool isHighSurrogate(std::uint32_t unit) noexcept {
  return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool isLowSurrogate(std::uint32_t unit) noexcept {
  return unit >= 0xDC00 && unit < 0xE000;
}

/// Returns the character of a surrogate pair.
constexpr std::uint32_t characterOf(std::uint32_t high, std::uint32_t low) noexcept {
  return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

}  // namespace zn::detail
