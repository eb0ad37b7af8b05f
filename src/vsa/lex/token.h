// Token: the unit that the lexer produces and the parser consumes. Internal.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>

namespace zn::korvo_sdk::impl {

/// Line and column are those of the token's last character. For Eof and Invalid they are those of
/// the character consumed last.
struct Token {
  /// The numbers are fixed: the parser ends its loop on any type below 2.
  enum class Type : std::int32_t {
    Eof = 0,      // text: "EOF", or the message for an unterminated string or list
    Invalid = 1,  // text: a complete message
    Id = 2,
    Int = 3,
    Real = 4,
    Comment = 5,   // text: "#" and the rest of the line
    Braces = 6,    // text: the list, normalised
    Parens = 7,    // text: the list, normalised
    Brackets = 8,  // text: as written
    Str = 9,       // text: as written, quotes and backslashes included
    Dot = 15,
    Comma = 16,
    Colon = 17,
    Semicolon = 18,
    Quote = 19,
    Slash = 21,
    Backslash = 22,
    Equals = 29,
    Plus = 30,
    Star = 32,
    Pipe = 33,
    True = 35,  // text: always in lower case, also for False and Null
    False = 36,
    Null = 37,
  };

  Type type = Type::Eof;
  String text;
  std::int32_t line = 0;
  std::int32_t column = 0;
  std::uint32_t endIndex = 0;  ///< `Lexer::index` after the token.
};

}  // namespace zn::korvo_sdk::impl

template <>
inline constexpr bool zn::ds::MOVES_AS_BYTES<zn::korvo_sdk::impl::Token> = true;
