// Lexer: converts characters to tokens. Internal.
//
// `consume` is the only function that fetches a character from the source, and it defines how
// positions are counted. A source may also expose its buffered bytes as a window. The inner loops
// then scan the window, compute the position once for a run of bytes, and call `consume` at the end
// of the window. Without a window they call `consume` for every character, with the same result.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/token.h"
#include "vsa/lex/token_text_pool.h"

namespace zn::korvo_sdk::impl {

namespace detail {

inline std::int32_t wrappingSum(std::int32_t a, std::size_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

}  // namespace detail

/// Marks the end of the input. A byte of this value in the text also ends the input.
inline constexpr char END_OF_INPUT = static_cast<char>(0xFF);

/// Never logs. Returns errors in the text as tokens. Throws only std::bad_alloc and the exceptions
/// of the source.
class Lexer {
 public:
  virtual ~Lexer() = default;
  /// Consumes one character and returns it. Afterwards `line` and `column` are its position.
  virtual char consume() = 0;

  char previous = 0;       ///< The character consumed last; 0 before the first.
  char lookaheadChar = 0;  ///< The next character; END_OF_INPUT at the end.
  // The following three counts wrap around past 2^31 - 1.
  std::int32_t index = 0;   ///< Characters consumed.
  std::int32_t line = 1;    ///< Line of `previous`, from 1.
  std::int32_t column = 0;  ///< Column of `previous`, from 1; 0 before the first character.

  /// The next token. White space and characters that are not printable are skipped.
  Token nextToken();
  /// Stores the next token in `out`.
  void nextToken(Token& out);

  // Each function reads one token of its type, which begins at `lookaheadChar`.

  Token comment();
  Token string();
  Token parens();
  Token braces();
  Token brackets();
  Token id();
  Token number();

  /// Consumes one character and returns its token.
  Token token(Token::Type type);
  /// A token of collected characters. Its text ends before the first NUL.
  Token token(Token::Type type, const ds::Vector<char>& chars) const;
  Token eof() const;
  Token invalidToken() const;
  Token unexpectedEof(const String& what) const;
  Token invalidListToken(const String& what) const;
  /// Reads the next part of a list of `parens` or `braces`.
  void list(ds::Vector<char>& chars, char open, char close);
  /// Whether `lookaheadChar` may follow the first character of a number.
  bool isNumberChar() const;

  /// Collected bytes of the current token; 0 if the token is in one block of the source and not
  /// collected.
  std::uint64_t collectedBytes() const noexcept { return chars_.size; }

  /// The record of the last Invalid token, or of the token that is incomplete at the end of the
  /// text. The text of an Invalid token is the log line of the record. The text of the Eof token
  /// after an incomplete token is the text of the record.
  const Diagnostic& problem() const noexcept { return problem_; }

  /// True when a byte 0xFF ended the input before the end of the source.
  bool endsAtMark() const noexcept { return lookaheadChar == END_OF_INPUT && !sourceEnded_; }

  // The sources and the StatementScanner read and move the window.

  /// The window: the buffered bytes. `*windowBegin` is the lookahead. Empty when both are equal.
  const char* windowBegin = nullptr;
  const char* windowEnd = nullptr;
  /// The first of the bytes up to `windowBegin` that are still in memory.
  const char* windowStart = nullptr;

  /// The last byte of the window. A byte before it can be consumed, because its successor is
  /// buffered.
  const char* windowLast() const noexcept {
    return windowBegin < windowEnd ? windowEnd - 1 : windowBegin;
  }
  /// Consumes the first `count` bytes of the window, which has more.
  void consumeBytes(std::size_t count) noexcept;
  /// Whether the last `count` tokens are in the current block of the source, and the offset of each
  /// is known.
  bool hasInBlock(std::uint32_t count) const noexcept {
    return tokensInBlock_ >= count && !isOffsetUnknown_;
  }
  /// The names of the text, and other short texts of tokens.
  TokenTextPool& texts() noexcept { return texts_; }

 protected:
  Lexer() = default;
  Lexer(const Lexer&) = delete;
  Lexer& operator=(const Lexer&) = delete;

  /// Every `consume` calls this function, which advances the position by the lookahead and makes
  /// `next` the new lookahead.
  char step(char next) noexcept;
  /// Derived classes call this before they read a block of bytes. A block has fewer than 2^32
  /// bytes.
  void countIndexWraps() noexcept;
  /// Derived classes that do not read in blocks call this when `index` may wrap around.
  void forgetOffset() noexcept { isOffsetUnknown_ = true; }
  /// Derived classes call this when the source has no more characters.
  void endSource() noexcept { sourceEnded_ = true; }

 private:
  struct ListKind;

  bool atEnd() const noexcept { return lookaheadChar == END_OF_INPUT; }
  void skipWhite();
  void skipBufferedWhite() noexcept;
  void collect();
  void collectRun(unsigned classes);
  void collectUntil(char a, char b);
  void collectListRun();
  void consumeLines(std::size_t count, const LineFeeds& feeds) noexcept;
  void consumeInLine(std::size_t count) noexcept;
  void collectBytes(std::size_t count);
  void reserveForList(std::size_t count);
  void separate(ds::Vector<char>& chars, char open, char close);
  bool readBuffered(Token& out);
  bool readLongBuffered(Token::Type type, const char* at, LineFeeds feeds, Token& out);
  void consumeTo(const char* end, const LineFeeds& feeds, Token& out) noexcept;
  Token readByCharacters();
  Token bracketedList(const ListKind& kind);
  Token collectedToken(Token::Type type);
  Token collectedList(Token::Type type);
  Token invalid(DiagnosticId id, const String& list) const;

  ds::Vector<char> chars_;  // the collected characters of the current token
  TokenTextPool texts_;
  std::int64_t offset() const noexcept;

  bool sourceEnded_ = false;
  bool isOffsetUnknown_ = false;
  std::uint32_t indexAtBlock_ = 0;   // `index` when the current block was read
  std::uint32_t tokensInBlock_ = 0;  // tokens read since the current block was read
  std::uint32_t indexWraps_ = 0;  // how often `index` had wrapped around before the current block
  mutable Diagnostic problem_;    // returned by problem(); const functions set it
};

// --- positions ---

inline char Lexer::step(char next) noexcept {
  if (previous == '\n') {
    line = detail::wrappingSum(line, 1);
    column = 1;
  } else {
    column = detail::wrappingSum(column, 1);
  }
  previous = lookaheadChar;
  index = detail::wrappingSum(index, 1);
  lookaheadChar = next;
  return previous;
}

// Consumes `count` bytes, fewer than the window has. Only the last one may be a line feed.
inline void Lexer::consumeInLine(std::size_t count) noexcept {
  if (previous == '\n') {
    line = detail::wrappingSum(line, 1);
    column = 0;
  }
  column = detail::wrappingSum(column, count);
  previous = windowBegin[count - 1];
  index = detail::wrappingSum(index, count);
  windowBegin += count;
  lookaheadChar = *windowBegin;
}

// Consumes `count` bytes, fewer than the window has.
inline void Lexer::consumeBytes(std::size_t count) noexcept {
  consumeLines(count, countLineFeeds(windowBegin, windowBegin + count - 1));
}

// Consumes `count` bytes, fewer than the window has. The line feeds before the last byte are
// already counted in `feeds`. The column is counted from the last line feed.
inline void Lexer::consumeLines(std::size_t count, const LineFeeds& feeds) noexcept {
  if (feeds.count != 0) {
    const std::size_t upToFeed = static_cast<std::size_t>(feeds.last + 1 - windowBegin);
    line = detail::wrappingSum(line, feeds.count - 1 + (previous == '\n' ? 1 : 0));
    index = detail::wrappingSum(index, upToFeed);
    windowBegin += upToFeed;
    previous = '\n';
    count -= upToFeed;
  }
  consumeInLine(count);
}

}  // namespace zn::korvo_sdk::impl
