// The fast path of the lexer. Internal.
//
// It reads a token if the token, the white space before it and the two bytes after it are in the
// window, and if its characters can be copied as they are. After a token of one character, one byte
// in the window is sufficient. A parenthesis or brace list must be normalized already. Such a list
// may have up to MAX_SHORT_LIST_BYTES bytes. The fast path collects no characters and computes the
// position once per token. All other tokens are read by the general code, with the same result. The
// functions are inline, because a function call per token costs 4 % of the time of the benchmark
// indexed.
#pragma once

#include <cstddef>
#include <string_view>

#include <vsa/foundation/char_class.h>
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/lexer.h"
#include "vsa/lex/token_scan.h"

namespace zn::korvo_sdk::impl {

namespace detail {

// The maximum size of a list on the fast path.
inline constexpr std::ptrdiff_t MAX_SHORT_LIST_BYTES = 256;

// Each of these functions returns the end of the token that begins at `at`. It returns null if the
// end is not in the window or the token is not in the common form.

inline const char* endOfShortList(const char* at, const char* last, char close) {
  const char* const limit = last - at > MAX_SHORT_LIST_BYTES ? at + MAX_SHORT_LIST_BYTES : last;
  const char* const end = endOfPlainList(at + 1, limit);
  return end != limit && *end == close && end[-1] != ' ' ? end + 1 : nullptr;
}

inline const char* endOfBrackets(const char* at, const char* last) {
  do ++at;
  while (at < last && (char_class::is(*at, char_class::DIGIT) || *at == '*'));
  return at < last && *at == ']' ? at + 1 : nullptr;
}

}  // namespace detail

// Consumes the characters up to `end`. Stores the position of the last consumed character in `out`.
inline void Lexer::consumeTo(const char* end, const LineFeeds& feeds, Token& out) noexcept {
  consumeLines(static_cast<std::size_t>(end - windowBegin), feeds);
  out.line = line;
  out.column = column;
}

// Reads a token on the fast path. Returns false and consumes nothing if the fast path does not
// apply.
inline bool Lexer::readBuffered(Token& out) {
  const char* const last = windowLast();
  const char* at = windowBegin;
  if (at == last) return false;
  LineFeeds feeds{0, nullptr};
  for (; char_class::is(*at, char_class::WHITE); ++at) {
    if (at == last) return false;
    if (*at == '\n') {
      ++feeds.count;
      feeds.last = at;
    }
  }
  if (at == last) return false;
  const Token::Type type = firstOf(*at);
  if (type == Token::Type::Id) {
    const char* const end = endOfName(at + 1, last);
    if (end == last) return false;
    consumeTo(end, feeds, out);
    out.type = texts_.intern({at, static_cast<std::size_t>(end - at)}, out.text);
    return true;
  }
  if (isOneCharacter(type)) {
    consumeTo(at + 1, feeds, out);
    out.type = type;
    out.text = texts_.character(*at);
    return true;
  }
  return readLongBuffered(type, at, feeds, out);
}

// Reads a token that begins at `at` and is neither a word nor a single character. Returns false and
// consumes nothing if the fast path does not apply.
inline bool Lexer::readLongBuffered(Token::Type type, const char* at, LineFeeds feeds, Token& out) {
  const char* const last = windowLast();
  const char* end = nullptr;
  if (type == Token::Type::Int) {
    const NumberEnd number = endOfNumber(at + 1, last);
    end = number.at;
    if (number.isReal) type = Token::Type::Real;
  } else if (type == Token::Type::Str) {
    const StringEnd string = endOfString(at, last);
    end = string.at;
    feeds.count += string.feeds.count;
    if (string.feeds.count != 0) feeds.last = string.feeds.last;
  } else if (type == Token::Type::Parens) {
    end = detail::endOfShortList(at, last, ')');
  } else if (type == Token::Type::Comment) {
    end = endOfComment(at, last);
    if (*end == '\0') return false;
  } else if (type == Token::Type::Brackets) {
    end = detail::endOfBrackets(at, last);
  } else if (type == Token::Type::Braces) {
    end = detail::endOfShortList(at, last, '}');
  }
  if (end == nullptr || end == last) return false;
  consumeTo(end, feeds, out);
  out.type = type;
  out.text = texts_.copy({at, static_cast<std::size_t>(end - at)});
  return true;
}

inline void Lexer::nextToken(Token& out) {
  if (!readBuffered(out)) out = readByCharacters();
  out.endIndex = static_cast<std::uint32_t>(index);
  progress.countToken();
}

}  // namespace zn::korvo_sdk::impl
