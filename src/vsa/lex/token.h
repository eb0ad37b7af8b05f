// Token: what the lexer produces and the parser consumes. Internal.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>

namespace zn::korvo_sdk::impl {

/// A token of a text. `line` and `column` are the position of the token's last character. For Eof
/// and Invalid they are the position of the last consumed character.
struct Token {
  /// The values are fixed. The parser stops at every type below 2. Every type from Dot on is a
  /// single character or a literal.
  enum class Type : std::int32_t {
    // The text is "EOF". If a string or list is not closed, the text is the message about it.
    Eof = 0,
    // The text is a complete message.
    Invalid = 1,
    Id = 2,
    Int = 3,
    Real = 4,
    // The text is "#" and the rest of the line.
    Comment = 5,
    // The text of a parenthesis or brace list is normalised.
    Braces = 6,
    Parens = 7,
    // The text of a bracket list is as written.
    Brackets = 8,
    // The text is as written, including the quotes and backslashes.
    Str = 9,
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
    // The text of True, False and Null is in lower case.
    True = 35,
    False = 36,
    Null = 37,
  };

  Type type = Type::Eof;
  String text;
  std::int32_t line = 0;
  std::int32_t column = 0;
  std::uint32_t endIndex = 0;  ///< The value of `Lexer::index` after the token.
};

}  // namespace zn::korvo_sdk::impl

template <>
inline constexpr bool zn::ds::MOVES_AS_BYTES<zn::korvo_sdk::impl::Token> = true;
