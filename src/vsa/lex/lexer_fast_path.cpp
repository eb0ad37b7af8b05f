// The short cut for numbers, strings, comments and lists.
#include "vsa/lex/lexer_fast_path.h"

namespace zn::korvo_sdk::impl {

namespace {

using char_class::is;
using Type = Token::Type;

// How far ahead a list is looked at before its reader decides that it is a long one.
constexpr std::ptrdiff_t SHORT_LIST = 256;

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

// For a token that is neither a name nor of one character, and that begins at `at`.
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
