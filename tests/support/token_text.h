// tokensText(): returns tokens as text, each with its kind, its text between < and >, its line and
// its column. An example is "Id<a>1,1 Equals<=>1,3".
#pragma once

#include <string>

#include "tests/support/text.h"
#include "vsa/lex/lexer.h"

namespace vsa_tests {

inline const char* kindName(zn::korvo_sdk::impl::Token::Type type) {
  using Type = zn::korvo_sdk::impl::Token::Type;
  switch (type) {
    case Type::Eof:
      return "Eof";
    case Type::Invalid:
      return "Invalid";
    case Type::Id:
      return "Id";
    case Type::Int:
      return "Int";
    case Type::Real:
      return "Real";
    case Type::Comment:
      return "Comment";
    case Type::Braces:
      return "Braces";
    case Type::Parens:
      return "Parens";
    case Type::Brackets:
      return "Brackets";
    case Type::Str:
      return "Str";
    case Type::Dot:
      return "Dot";
    case Type::Comma:
      return "Comma";
    case Type::Colon:
      return "Colon";
    case Type::Semicolon:
      return "Semicolon";
    case Type::Quote:
      return "Quote";
    case Type::Slash:
      return "Slash";
    case Type::Backslash:
      return "Backslash";
    case Type::Equals:
      return "Equals";
    case Type::Plus:
      return "Plus";
    case Type::Star:
      return "Star";
    case Type::Pipe:
      return "Pipe";
    case Type::True:
      return "True";
    case Type::False:
      return "False";
    case Type::Null:
      return "Null";
  }
  return "?";
}

inline std::string tokenText(const zn::korvo_sdk::impl::Token& token) {
  return std::string(kindName(token.type)) + '<' + visible(text(token.text)) + '>' +
         std::to_string(token.line) + ',' + std::to_string(token.column);
}

/// Returns the remaining tokens of `lexer` as text, up to the first Eof or Invalid token.
/// `AnyLexer` must have a function `Token nextToken()`.
template <class AnyLexer>
std::string tokensText(AnyLexer& lexer) {
  using Type = zn::korvo_sdk::impl::Token::Type;
  std::string stream;
  while (true) {
    const zn::korvo_sdk::impl::Token token = lexer.nextToken();
    if (!stream.empty()) stream += ' ';
    stream += tokenText(token);
    if (token.type == Type::Eof || token.type == Type::Invalid) return stream;
  }
}

}  // namespace vsa_tests
