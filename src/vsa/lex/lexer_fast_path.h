// The lexer's short cut, in line where tokens are wanted by the million: a token that the window
// shows whole, from the white space before it to the character behind it, and that its text is a
// copy of. Nothing is collected, and the position is settled once. Whatever else comes is read by
// characters. Internal; the door is vsa.h.
#pragma once

#include <cstddef>
#include <string_view>

#include <vsa/foundation/char_class.h>
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/lexer.h"
#include "vsa/lex/token_scan.h"

namespace zn::korvo_sdk::impl {

inline void Lexer::nextToken(Token& out) {
  if (!readInSight(out)) out = readByCharacters();
}

// Consumes the characters up to `end`: the position is that of the token `out`.
inline void Lexer::passTo(const char* end, const LineFeeds& feeds, Token& out) noexcept {
  passLines(static_cast<std::size_t>(end - windowBegin), feeds);
  out.line = line;
  out.column = column;
}

// False with nothing consumed when the token is not in sight.
inline bool Lexer::readInSight(Token& out) {
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

}  // namespace zn::korvo_sdk::impl
