// PlainLexer: a reference lexer, which follows the rules of the format literally. It reads one
// character at a time from a text in memory, without any optimisation. Tests and fuzzers compare
// the tokens of the reader's lexer with its tokens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "vsa/lex/token.h"

namespace vsa_tests {

class PlainLexer {
 public:
  using Token = zn::korvo_sdk::impl::Token;

  /// `fromString` has an effect only if the text is empty. The reader's lexer of an empty String
  /// skips one NUL and counts it as a column. If `fromString` is true, this lexer does the same.
  explicit PlainLexer(std::string text, bool fromString = false) : text_(std::move(text)) {
    if (text_.empty() && fromString) text_.push_back('\0');
  }

  Token nextToken() {
    while (!atEnd() && isWhite(peek())) consume();
    if (atEnd()) return make(Type::Eof, "EOF");
    const char c = peek();
    if (c == '"') return string();
    if (c == '#') return comment();
    if (c == '(') return list('(', ')', "PARENS", "PAREN", Type::Parens);
    if (c == '{') return list('{', '}', "BRACES", "BRACE", Type::Braces);
    if (c == '[') return brackets();
    if (c == '-' || isDigit(c)) return number();
    if (c == '_' || isLetter(c)) return name();
    const Type single = singleType(c);
    if (single == Type::Invalid) return invalid("INVALID TOKEN");
    return make(single, std::string(1, consume()));
  }

 private:
  using Type = Token::Type;

  // --- characters ---

  static unsigned byteOf(char c) { return static_cast<unsigned char>(c); }
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }
  static bool isHigh(char c) { return byteOf(c) >= 0x80 && byteOf(c) <= 0xFE; }
  static bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isHigh(c);
  }
  static bool isPrintable(char c) { return (c >= ' ' && c <= '~') || isHigh(c); }
  // White space is the blank, and every character that is not printable.
  static bool isWhite(char c) { return c == ' ' || !isPrintable(c); }
  static bool isOneOf(char c, std::string_view set) {
    return set.find(c) != std::string_view::npos;
  }
  static bool isNumberChar(char c) { return isDigit(c) || isOneOf(c, "+-.ABCDEFINUabcdefinu"); }

  static Type singleType(char c) {
    switch (c) {
      case '\'':
        return Type::Quote;
      case '*':
        return Type::Star;
      case '+':
        return Type::Plus;
      case ',':
        return Type::Comma;
      case '.':
        return Type::Dot;
      case '/':
        return Type::Slash;
      case ':':
        return Type::Colon;
      case ';':
        return Type::Semicolon;
      case '=':
        return Type::Equals;
      case '\\':
        return Type::Backslash;
      case '|':
        return Type::Pipe;
      default:
        return Type::Invalid;
    }
  }

  // --- the text ---

  bool atEnd() const { return at_ >= text_.size() || byteOf(text_[at_]) == 0xFF; }
  char peek() const { return text_[at_]; }
  bool nextIs(char c) const { return !atEnd() && peek() == c; }

  char consume() {
    if (at_ > 0 && text_[at_ - 1] == '\n') {
      ++line_;
      column_ = 1;
    } else {
      ++column_;
    }
    return text_[at_++];
  }

  // --- tokens ---

  Token make(Type type, const std::string& text) const {
    return {type, zn::String(text.c_str()), line_, column_};
  }

  Token invalid(const std::string& what) const {
    return make(Type::Invalid, what + " (" + std::to_string(line_) + ',' + std::to_string(column_) +
                                   "): '" + peek() + '\'');
  }

  Token cutOff(const std::string& what) const {
    return make(Type::Eof, "UNEXPECTED EOF while parsing " + what);
  }

  Token comment() {
    std::string chars;
    while (!atEnd() && peek() != '\n' && peek() != '\r') chars += consume();
    return make(Type::Comment, chars);
  }

  Token string() {
    std::string chars(1, consume());
    while (true) {
      if (atEnd()) return cutOff("STRING");
      if (peek() == '"') break;
      const char c = consume();
      chars += c;
      // A backslash with a backslash or quote after it is one escape sequence.
      if (c == '\\' && (nextIs('\\') || nextIs('"'))) chars += consume();
    }
    chars += consume();
    return make(Type::Str, chars);
  }

  Token name() {
    std::string chars;
    while (!atEnd() && (isLetter(peek()) || isDigit(peek()) || peek() == '_')) chars += consume();
    std::string lower;
    for (const char c : chars) lower += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    if (lower == "true") return make(Type::True, lower);
    if (lower == "false") return make(Type::False, lower);
    if (lower == "null") return make(Type::Null, lower);
    return make(Type::Id, chars);
  }

  Token number() {
    std::string chars(1, consume());
    while (!atEnd() && isNumberChar(peek())) chars += consume();
    const bool isReal = chars.find_first_of(".fFnNaAiI") != std::string::npos;
    return make(isReal ? Type::Real : Type::Int, chars);
  }

  Token brackets() {
    std::string chars;
    while (true) {
      if (atEnd()) return cutOff("BRACKETS");
      const char c = peek();
      if (!isOneOf(c, "[]*") && !isDigit(c) && !isWhite(c))
        return invalid("INVALID BRACKET LIST TOKEN");
      chars += consume();
      if (nextIs(']')) break;
    }
    chars += consume();
    return make(Type::Brackets, chars);
  }

  Token list(char open, char close, const char* plural, const char* singular, Type type) {
    std::string chars;
    int depth = 0;
    while (true) {
      if (atEnd()) return cutOff(plural);
      const char c = peek();
      if (!isOneOf(c, "()[]{},") && !isWhite(c) && !isNumberChar(c)) {
        return invalid(std::string("INVALID ") + singular + " LIST TOKEN");
      }
      if (!chars.empty() && c == open) {
        consume();
        ++depth;
      } else if (depth > 0 && c == close) {
        consume();
        --depth;
      } else {
        listStep(chars, open, close);
      }
      if (depth == 0 && nextIs(close)) {
        chars += consume();
        return make(type, chars);
      }
    }
  }

  void listStep(std::string& chars, char open, char close) {
    const char c = peek();
    if (c == open || c == close) {
      chars += consume();
    } else if (isWhite(c)) {
      while (!atEnd() && isWhite(peek())) consume();
      separate(chars, open, close);
    } else if (isOneOf(c, "()[]{},")) {
      consume();
      separate(chars, open, close);
    } else {
      chars += consume();
    }
  }

  void separate(std::string& chars, char open, char close) const {
    const char last = chars.back();
    if (!isWhite(last) && last != open && !nextIs(close)) chars += ' ';
  }

  std::string text_;
  std::size_t at_ = 0;
  std::int32_t line_ = 1;
  std::int32_t column_ = 0;
};

}  // namespace vsa_tests
