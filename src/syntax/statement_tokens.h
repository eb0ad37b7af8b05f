// StatementTokens: reads the tokens of one statement of a text in memory, without their positions.
// Internal.
#pragma once

#include <cstddef>
#include <string_view>

#include <vsa/syntax.h>
#include "vsa/lex/token_scan.h"

namespace vsa::impl {

inline std::string_view between(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

/// Returns the kind of a word: True, False, Null or Word.
SyntaxKind kindOfLiteral(std::string_view word) noexcept;
inline SyntaxKind kindOfWord(std::string_view word) noexcept {
  if (word.size() != 4 && word.size() != 5) return SyntaxKind::Word;
  // A quick test of the first letter: most words of this size, such as the keyword `vec3`, are not
  // `true`, `false` or `null`.
  const char first = static_cast<char>(word.front() | 0x20);
  const bool mayBeLiteral = first == 't' || first == 'f' || first == 'n';
  return mayBeLiteral ? kindOfLiteral(word) : SyntaxKind::Word;
}

/// The result of `plainList`. A plain list contains only numbers separated by single blanks.
struct PlainList {
  const char* end = nullptr;  // null if the list is not of this form
  std::size_t elements = 0;
};

/// Recognises a plain list of at most 256 bytes that begins at `at`. Most lists of a scene are not
/// longer.
PlainList plainList(const char* at, const char* end, char close) noexcept;

/// The tokens of one statement, or of one part of a long statement. `kind` and `text()` are the
/// kind and the text of the token that was read last.
class StatementTokens {
 public:
  StatementTokens(const char* at, const char* end) noexcept : begin_(at), at_(at), end_(end) {}

  void advance() noexcept;

  bool is(char c) const noexcept { return kind == SyntaxKind::Punctuation && *begin_ == c; }
  bool isEnd() const noexcept { return kind == SyntaxKind::EndOfText || is(';') || is(':'); }
  std::string_view text() const noexcept { return between(begin_, at_); }
  const char* begin() const noexcept { return begin_; }
  const char* at() const noexcept { return at_; }
  /// Whether the maximum number of tokens in one part was read. The rest of the statement is
  /// another part.
  bool isFull() const noexcept { return count_ >= MAX_TOKENS; }

  SyntaxKind kind = SyntaxKind::EndOfText;
  std::size_t plainElements = 0;

 private:
  // The maximum number of tokens in one part of a statement. It equals MAX_TOKENS of
  // StatementReader.
  static constexpr std::size_t MAX_TOKENS = 65536;

  void advanceOther(zn::korvo_sdk::impl::Token::Type first) noexcept;

  const char* begin_;
  const char* at_;
  const char* end_;
  std::size_t count_ = 0;
};

}  // namespace vsa::impl
