// Lexer: characters to tokens. Internal.
//
// `consume` alone fetches a character, and defines how positions are counted. A source may also
// expose the bytes that it has in memory as a window. The inner loops then read the window, compute
// the position once for a run of bytes, and call `consume` at the end of the window. Without a
// window every character goes through `consume`, with the same result.
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

/// The mark for the end of the input. A byte of this value in the text ends it there.
inline constexpr char END_OF_INPUT = static_cast<char>(0xFF);

/// Never logs. Errors in the text are returned as tokens; only std::bad_alloc and exceptions of the
/// source leave it.
class Lexer {
 public:
  virtual ~Lexer() = default;
  /// Consumes one character and returns it. Afterwards `line` and `column` are its position.
  virtual char consume() = 0;

  char previous = 0;        ///< The character consumed last; 0 before the first.
  char lookaheadChar = 0;   ///< The next character; END_OF_INPUT at the end.
  std::int32_t index = 0;   ///< Characters consumed.
  std::int32_t line = 1;    ///< Of `previous`, from 1. All three counts wrap around past 2^31 - 1.
  std::int32_t column = 0;  ///< Of `previous`, from 1; 0 before the first character.

  /// The next token. White space and characters that are not printable are skipped.
  Token nextToken();
  /// The same into `out`.
  void nextToken(Token& out);

  // One token of its kind, beginning at `lookaheadChar`.

  Token comment();
  Token string();
  Token parens();
  Token braces();
  Token brackets();
  Token id();
  Token number();

  /// Consumes one character and returns its token.
  Token token(Token::Type type);
  /// A token of collected characters; its text ends at the first NUL among them.
  Token token(Token::Type type, const ds::Vector<char>& chars) const;
  Token eof() const;
  Token invalidToken() const;
  Token unexpectedEof(const String& what) const;
  Token invalidListToken(const String& what) const;
  /// One step of the list reader behind `parens` and `braces`.
  void list(ds::Vector<char>& chars, char open, char close);
  /// Whether `lookaheadChar` may follow the first character of a number.
  bool isNumberChar() const;

  /// The record behind the last Invalid token; its log line is that token's text.
  const Diagnostic& problem() const noexcept { return problem_; }

  /// True when a byte 0xFF, and not the end of the source, is what ends the input.
  bool endsAtMark() const noexcept { return lookaheadChar == END_OF_INPUT && !sourceEnded_; }

 protected:
  Lexer() = default;
  Lexer(const Lexer&) = delete;
  Lexer& operator=(const Lexer&) = delete;

  /// The bookkeeping of every `consume`: counts the lookahead, and makes `next` the lookahead.
  char step(char next) noexcept;
  /// For sources: call before each block of bytes, which has fewer than 2^32.
  void countIndexWraps() noexcept;
  /// For sources that do not count: `index` may wrap around.
  void forgetOffset() noexcept { isOffsetUnknown_ = true; }
  /// For sources: the source has no more characters.
  void endSource() noexcept { sourceEnded_ = true; }

  /// The buffered bytes. `*windowBegin` is the lookahead; empty when the two are equal.
  const char* windowBegin = nullptr;
  const char* windowEnd = nullptr;

 private:
  struct ListKind;

  bool atEnd() const noexcept { return lookaheadChar == END_OF_INPUT; }
  // The window's last byte. Bytes before it can be consumed: the next one is buffered.
  const char* windowLast() const noexcept {
    return windowBegin < windowEnd ? windowEnd - 1 : windowBegin;
  }
  void skipWhite();
  void skipBufferedWhite() noexcept;
  void collect();
  void collectRun(unsigned classes);
  void collectUntil(char a, char b);
  void collectListRun();
  void consumeBytes(std::size_t count) noexcept;
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
  std::uint32_t indexAtBlock_ = 0;  // `index` when the current block was read
  std::uint32_t indexWraps_ = 0;    // of `index` before that
  mutable Diagnostic problem_;      // the functions that make Invalid tokens are const
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

// Consumes `count` bytes of the window, fewer than it holds, with no line feed before the last.
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

// Consumes `count` bytes of the window, fewer than it holds.
inline void Lexer::consumeBytes(std::size_t count) noexcept {
  consumeLines(count, countLineFeeds(windowBegin, windowBegin + count - 1));
}

// The same with the line feeds before the last byte already counted. The column counts from the
// last of them.
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
