// Character classes of bytes. They do not depend on the locale. String and the lexer use the same
// table.
//
// Every byte from 0x80 to 0xFE is a printable letter, so names, strings and comments may contain
// UTF-8. The byte 0xFF marks the end of the text and is in no class.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zn::char_class {

enum : std::uint8_t {
  DIGIT = 1,       // 0-9
  HEX_DIGIT = 2,   // 0-9 A-F a-f
  LETTER = 4,      // A-Z a-z and 0x80..0xFE
  SPACE = 8,       // blank \t \n \v \f \r
  PRINTABLE = 16,  // 0x20..0x7E and 0x80..0xFE
  // can follow the first character of a number, as in 1.5e-3, 2f, 12u, -inf and -nan:
  // + - . A-F I N U a-f i n u 0-9
  NUMBER = 32,
  NAME = 64,    // can follow the first character of an identifier: letters, digits, _
  WHITE = 128,  // skipped between tokens: white space, and unprintable bytes other than 0xFF
};

namespace detail {

constexpr bool within(unsigned byte, char first, char last) {
  return byte >= static_cast<unsigned char>(first) && byte <= static_cast<unsigned char>(last);
}

constexpr bool isOneOf(unsigned byte, const char* set) {
  for (; *set != '\0'; ++set) {
    if (byte == static_cast<unsigned char>(*set)) return true;
  }
  return false;
}

constexpr std::uint8_t classesOf(unsigned byte) {
  const bool high = byte >= 0x80 && byte <= 0xFE;
  const bool digit = within(byte, '0', '9');
  const bool hexDigit = digit || within(byte, 'A', 'F') || within(byte, 'a', 'f');
  const bool letter = high || within(byte, 'A', 'Z') || within(byte, 'a', 'z');
  const bool space = byte == ' ' || (byte >= '\t' && byte <= '\r');
  const bool printable = high || (byte >= 0x20 && byte <= 0x7E);
  const bool number = hexDigit || isOneOf(byte, "+-.IiNnUu");
  const bool name = letter || digit || byte == '_';
  const bool white = (space || !printable) && byte != 0xFF;
  return static_cast<std::uint8_t>((digit ? DIGIT : 0) | (hexDigit ? HEX_DIGIT : 0) |
                                   (letter ? LETTER : 0) | (space ? SPACE : 0) |
                                   (printable ? PRINTABLE : 0) | (number ? NUMBER : 0) |
                                   (name ? NAME : 0) | (white ? WHITE : 0));
}

constexpr std::array<std::uint8_t, 256> makeTable() {
  std::array<std::uint8_t, 256> table{};
  for (unsigned byte = 0; byte < 256; ++byte) table[byte] = classesOf(byte);
  return table;
}

}  // namespace detail

/// The classes of each byte: an OR of the constants above.
inline constexpr std::array<std::uint8_t, 256> TABLE = detail::makeTable();

/// Whether `c` is in at least one of `classes`, an OR of the constants above.
constexpr bool is(char c, unsigned classes) {
  return (TABLE[static_cast<unsigned char>(c)] & classes) != 0;
}

}  // namespace zn::char_class
