// Lexer: converts characters to tokens. Internal.
//
// A derived class fetches the characters from a source: its constructor the first one, and
// `consume` the others. `consume` defines how positions are counted. A derived class may also
// expose the buffered bytes of its source as a window. The inner loops then scan the window and
// compute the position once for a run of bytes. At the end of the window, and without a window,
// they call `consume` for each character. Both ways give the same result.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/source_progress.h"
#include "vsa/lex/token.h"
#include "vsa/lex/token_text_pool.h"

namespace zn::korvo_sdk::impl {

namespace detail {

inline std::int32_t wrappingSum(std::int32_t a, std::size_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

}  // namespace detail

/// The lookahead at the end of the input. A byte of this value in the text also ends the input.
inline constexpr char END_OF_INPUT = static_cast<char>(0xFF);

/// Converts the characters of one source to tokens. Does not log: it returns errors in the text as
/// tokens. Throws only std::bad_alloc and the exceptions of the source.
class Lexer {
 public:
  virtual ~Lexer() = default;
  /// Consumes one character and returns it. Sets `line` and `column` to its position.
  virtual char consume() = 0;

  /// The last consumed character. It is 0 before the first character.
  char previous = 0;
  /// The next character. It is END_OF_INPUT at the end.
  char lookaheadChar = 0;
  // The following three counts wrap around after 2^31 - 1.
  std::int32_t index = 0;  ///< The number of consumed characters.
  std::int32_t line = 1;   ///< The line of `previous`. The first line is 1.
  /// The column of `previous`. The first column is 1. The value is 0 before the first character.
  std::int32_t column = 0;

  /// Returns the next token. Skips white space and non-printable characters before the token.
  Token nextToken();
  /// Stores the next token in `out`.
  void nextToken(Token& out);

  // Each of the following functions reads one token of its type. The token must begin at
  // `lookaheadChar`. If the token is cut off or contains an invalid character, the function returns
  // an Eof or Invalid token instead.

  Token comment();
  Token string();
  Token parens();
  Token braces();
  Token brackets();
  Token id();
  Token number();

  /// Consumes one character and returns its token.
  Token token(Token::Type type);
  /// Returns a token of collected characters. Its text ends before the first NUL.
  Token token(Token::Type type, const ds::Vector<char>& chars) const;
  Token eof() const;
  Token invalidToken() const;
  Token unexpectedEof(const String& what) const;
  Token invalidListToken(const String& what) const;
  /// Reads the next character or separator of a parenthesis or brace list. Appends it to `chars` in
  /// normal form.
  void list(ds::Vector<char>& chars, char open, char close);
  /// Whether `lookaheadChar` may follow the first character of a number.
  bool isNumberChar() const;

  /// The number of bytes in the buffer of collected characters. They belong to the token that is
  /// being read or, if its characters are not collected, to an earlier token.
  std::uint64_t collectedBytes() const noexcept { return chars_.size; }

  /// The record of the last error. A default record if there was no error. For an invalid
  /// character, the lexer returns an Invalid token whose text is the log line of the record. For a
  /// token that the end of the text cuts off, it returns an Eof token whose text is `text` of the
  /// record.
  const Diagnostic& problem() const noexcept { return problem_; }

  /// Returns true if a byte 0xFF ended the input before the end of the source.
  bool endsAtMark() const noexcept { return lookaheadChar == END_OF_INPUT && !progress.hasEnded(); }

  // The sources and the StatementScanner read and change the window.

  /// The window: the buffered bytes from `windowBegin` to `windowEnd`. The first byte is the
  /// lookahead. The window is empty if both pointers are equal. A source calls
  /// `progress.beginBlock` before it replaces the window. StatementScanner relies on this when it
  /// goes back in the window.
  const char* windowBegin = nullptr;
  const char* windowEnd = nullptr;
  /// The blocks and the end of the source. The sources call `beginBlock`, `forgetOffset` and `end`.
  SourceProgress progress;

  /// The last byte of the window, or `windowBegin` if the window is empty. To consume a byte, the
  /// lexer needs the byte after it as the new `lookaheadChar`. So the last byte of the window
  /// cannot be consumed without the source.
  const char* windowLast() const noexcept {
    return windowBegin < windowEnd ? windowEnd - 1 : windowBegin;
  }
  /// Consumes the first `count` bytes of the window. `count` must be at least 1, and the window
  /// must contain more than `count` bytes.
  void consumeBytes(std::size_t count) noexcept;
  /// The pool that creates the texts of the tokens.
  TokenTextPool& texts() noexcept { return texts_; }

 protected:
  Lexer() = default;
  Lexer(const Lexer&) = delete;
  Lexer& operator=(const Lexer&) = delete;

  /// Advances the position by the lookahead and makes `next` the new lookahead. Every
  /// implementation of `consume` must call this function.
  char step(char next) noexcept;

 private:
  struct ListKind;

  bool atEnd() const noexcept { return lookaheadChar == END_OF_INPUT; }
  void skipWhite();
  void collect();
  void collectRun(unsigned classes);
  void collectUntil(char a, char b);
  void collectListRun();
  void consumeLines(std::size_t count, const LineFeeds& feeds) noexcept;
  void consumeInLine(std::size_t count) noexcept;
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
  // See problem(). Mutable, because const functions set it.
  mutable Diagnostic problem_;
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

// Like consumeBytes. Only the last of the `count` bytes may be a line feed.
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

inline void Lexer::consumeBytes(std::size_t count) noexcept {
  consumeLines(count, countLineFeeds(windowBegin, windowBegin + count - 1));
}

// Like consumeBytes. `feeds` describes the line feeds before the last of the `count` bytes. The
// column is counted from the last of these line feeds.
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
