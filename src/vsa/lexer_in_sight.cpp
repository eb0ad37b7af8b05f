// The lexer's short cut: a token that the window shows whole, from the white space before it to the
// character behind it, and that its text is a copy of. Nothing is collected, and the position is
// settled once. Whatever else comes is read by characters.
#include <cstddef>
#include <string_view>

#include "foundation/char_class.h"
#include "vsa/byte_scan.h"
#include "vsa/lexer.h"
#include "vsa/token_scan.h"

namespace zn::korvo_sdk::impl {

namespace {

using char_class::is;
using Type = Token::Type;

// How far ahead a list is looked at before its reader decides that it is a long one.
constexpr std::ptrdiff_t SHORT_LIST = 256;

constexpr bool isOneCharacter(Type type) {
  return static_cast<int>(type) >= static_cast<int>(Type::Dot);
}

// Where tokens end that begin at a place, or null when the end is not in sight.

const char* endOfShortList(const char* at, const char* last, char close) {
  const char* const limit = last - at > SHORT_LIST ? at + SHORT_LIST : last;
  const char* const end = endOfPlainList(at + 1, limit);
  return end != limit && *end == close && end[-1] != ' ' ? end + 1 : nullptr;
}

const char* endOfBrackets(const char* at, const char* last) {
  do ++at;
  while (at < last && (is(*at, char_class::DIGIT) || *at == '*'));
  return at < last && *at == ']' ? at + 1 : nullptr;
}

}  // namespace

// Consumes the characters up to `end`: the position is that of the token `out`.
inline void Lexer::passTo(const char* end, const LineFeeds& feeds, Token& out) noexcept {
  passLines(static_cast<std::size_t>(end - windowBegin), feeds);
  out.line = line;
  out.column = column;
}

bool Lexer::readInSight(Token& out) {
  const char* const last = windowLast();
  const char* at = windowBegin;
  if (at == last) return false;
  LineFeeds feeds{0, nullptr};
  for (; is(*at, char_class::WHITE); ++at) {
    if (at == last) return false;
    if (*at == '\n') {
      ++feeds.count;
      feeds.last = at;
    }
  }
  if (at == last) return false;
  const Type type = firstOf(*at);
  if (type == Type::Id) {
    const char* const end = endOfName(at + 1, last);
    if (end == last) return false;
    passTo(end, feeds, out);
    texts_.word({at, static_cast<std::size_t>(end - at)}, out);
    return true;
  }
  if (isOneCharacter(type)) {
    passTo(at + 1, feeds, out);
    out.type = type;
    out.text = texts_.character(*at);
    return true;
  }
  return readLongInSight(type, at, feeds, out);
}

// The same for a token that is neither a name nor of one character, and that begins at `at`.
bool Lexer::readLongInSight(Type type, const char* at, LineFeeds feeds, Token& out) {
  const char* const last = windowLast();
  const char* end = nullptr;
  if (type == Type::Int) {
    const NumberEnd number = endOfNumber(at + 1, last);
    end = number.at;
    if (number.isReal) type = Type::Real;
  } else if (type == Type::Str) {
    const StringEnd string = endOfString(at, last);
    end = string.at;
    feeds.count += string.feeds.count;
    if (string.feeds.count != 0) feeds.last = string.feeds.last;
  } else if (type == Type::Parens) {
    end = endOfShortList(at, last, ')');
  } else if (type == Type::Comment) {
    end = findStop(at, last, '\n', '\r');
  } else if (type == Type::Brackets) {
    end = endOfBrackets(at, last);
  } else if (type == Type::Braces) {
    end = endOfShortList(at, last, '}');
  }
  if (end == nullptr || end == last) return false;
  passTo(end, feeds, out);
  out.type = type;
  const std::string_view text(at, static_cast<std::size_t>(end - at));
  if (type == Type::Comment) {
    out.text = texts_.lasting(text.substr(0, text.find('\0')));
  } else {
    texts_.passing(text, out.text);
  }
  return true;
}

}  // namespace zn::korvo_sdk::impl
