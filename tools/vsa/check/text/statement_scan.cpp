#include "tools/vsa/check/text/statement_scan.h"

#include <algorithm>

#include <vsa/foundation/char_class.h>

namespace vsa_tools {

namespace {

using Text = std::string_view;

// The maximum number of bytes that are searched for the end of something that may have no end. Each
// mistake may cause such a search, so it must not extend to the end of the text.
constexpr std::size_t MAX_LOOK_AHEAD = 4096;

// Returns whether the character is skipped between tokens: white space or a control character.
bool isBlank(char c) {
  return static_cast<unsigned char>(c) <= ' ' || c == '\x7F';
}

bool isNameStart(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z') || byte == '_' ||
         (byte >= 0x80 && byte < 0xFF);
}

bool isNamePart(char c) {
  return isNameStart(c) || (c >= '0' && c <= '9');
}

std::size_t endOfLine(Text text, std::size_t at) {
  return std::min(text.find('\n', at), text.size());
}

/// Returns the offset after a comment of another format that begins at `at`: "// text" or "-- text"
/// up to the line end, or "/* text */". Returns 0 if there is none.
std::size_t endOfForeignComment(Text text, std::size_t at) {
  if (at >= text.size()) return 0;
  const Text begin = text.substr(at, 2);
  if (begin == "//" || begin == "--") return endOfLine(text, at);
  if (begin != "/*") return 0;
  const std::size_t size = text.substr(at, MAX_LOOK_AHEAD).find("*/", 2);
  return size == Text::npos ? endOfLine(text, at) : at + size + 2;
}

/// Returns whether two names begin at `at`, and the line ends after them: a declaration or
/// directive without its semicolon.
bool isPairLine(Text text, std::size_t at) {
  if (at >= text.size()) return false;
  const std::size_t first = endOfName(text, at);
  const std::size_t second = std::min(text.find_first_not_of(" \t", first), text.size());
  const std::size_t end = endOfName(text, second);
  const std::size_t next = std::min(text.find_first_not_of(" \t\r", end), text.size());
  return first > at && second > first && end > second && next < text.size() && text[next] == '\n';
}

/// Returns the offset of the last quote before `end` that no backslash escapes, or npos if there is
/// none.
std::size_t openingQuote(Text text, std::size_t end) {
  for (std::size_t at = text.substr(0, end).rfind('"'); at != Text::npos;
       at = text.substr(0, at).rfind('"')) {
    const std::size_t other = text.substr(0, at).find_last_not_of('\\');
    const std::size_t backslashes = at - (other == Text::npos ? 0 : other + 1);
    if (backslashes % 2 == 0) return at;
  }
  return Text::npos;
}

/// Returns the offset after the list that begins at `at`. If a `;` or the end of the text comes
/// before the list is closed, returns the offset of that place.
std::size_t endOfList(Text text, std::size_t at) {
  int depth = 0;
  for (; at < text.size() && text[at] != ';'; ++at) {
    const char c = text[at];
    if (c == '(' || c == '[' || c == '{') ++depth;
    if ((c == ')' || c == ']' || c == '}') && --depth == 0) return at + 1;
  }
  return at;
}

std::size_t endOfToken(Text text, std::size_t at) {
  switch (text[at]) {
    case '"':
      return endOfString(text, at);
    case '#':
      return endOfLine(text, at);
    case '(':
    case '[':
    case '{':
      return endOfList(text, at);
    default:
      return at + 1;
  }
}

}  // namespace

std::size_t skipBlanks(Text text, std::size_t at) {
  while (at < text.size() && isBlank(text[at])) ++at;
  return at;
}

std::size_t endOfName(Text text, std::size_t at) {
  if (at >= text.size() || !isNameStart(text[at])) return at;
  while (at < text.size() && isNamePart(text[at])) ++at;
  return at;
}

std::size_t endOfString(Text text, std::size_t at) {
  for (++at; at < text.size() && text[at] != '"'; ++at) {
    if (text[at] == '\\') ++at;
  }
  return std::min(at + 1, text.size());
}

std::size_t endOfPath(Text text, std::size_t at) {
  while (at < text.size()) {
    if (text[at] == '[') {
      const Text searched = text.substr(0, at + MAX_LOOK_AHEAD);
      at = endOfList(searched, at);
      if (at == searched.size()) return text.size();
    } else if (text[at] == '.' || isNamePart(text[at])) {
      ++at;
    } else {
      break;
    }
  }
  return at;
}

Text nameBefore(Text text, std::size_t end) {
  while (end > 0 && isBlank(text[end - 1])) --end;
  std::size_t begin = end;
  while (begin > 0 && isNamePart(text[begin - 1])) --begin;
  return text.substr(begin, end - begin);
}

Statement nextStatement(Text text, std::size_t from, std::size_t limit) {
  Statement found;
  found.begin = skipBlanks(text, from);
  if (found.begin < text.size() && text[found.begin] == '#') {
    found.end = endOfLine(text, found.begin);
    found.isComment = true;
    return found;
  }
  if (const std::size_t end = endOfForeignComment(text, found.begin)) {
    found.end = end;
    return found;
  }
  std::size_t at = found.begin;
  const Text searched = text.substr(0, limit);
  while (at < searched.size() && text[at] != ';' && text[at] != ':') at = endOfToken(searched, at);
  if (at < searched.size()) found.terminator = text[at++];
  found.end = at;
  return found;
}

bool isConflictMarker(Text text, std::size_t at) {
  if (at >= text.size() || (at > 0 && text[at - 1] != '\n')) return false;
  constexpr std::size_t LENGTH = 7;
  const char mark = text[at];
  const std::size_t end = std::min(text.find_first_not_of(mark, at), text.size());
  return (mark == '<' || mark == '>' || mark == '=') && end - at == LENGTH;
}

bool looksLikeStatement(Text text, std::size_t at) {
  at = skipBlanks(text, at);
  const std::size_t afterPath = endOfPath(text, at);
  const std::size_t next = skipBlanks(text, afterPath);
  if (afterPath == at || next >= text.size()) return false;
  if (text[at] != '.' && !isNameStart(text[at])) return false;
  if (text[next] == '=' || text.substr(next, 2) == "|=") return true;
  const std::size_t afterName = endOfName(text, next);
  const std::size_t end = skipBlanks(text, afterName);
  const bool isPair = afterName > next && endOfName(text, at) == afterPath && next > afterPath;
  return isPair && end < text.size() && (text[end] == ':' || text[end] == ';');
}

std::optional<std::size_t> openStringBefore(Text text, std::size_t offset) {
  constexpr std::size_t MAX_LOOK_BACK = 256;
  const std::size_t from = offset - std::min(offset, MAX_LOOK_BACK);
  const std::size_t back = text.substr(from, offset - from).find_last_of("\";:\n");
  if (back == Text::npos || text[from + back] != '"') return std::nullopt;
  const std::size_t end = from + back;
  const std::size_t open = openingQuote(text, end);
  if (open == Text::npos) return std::nullopt;
  std::size_t line = endOfLine(text, open) + 1;
  while (line < end && !looksLikeStatement(text, line)) line = endOfLine(text, line) + 1;
  return line < end ? std::optional(open) : std::nullopt;
}

std::vector<std::size_t> semicolonsInList(Text text, std::size_t open) {
  std::vector<std::size_t> found;
  if (open >= text.size() || (text[open] != '(' && text[open] != '{')) return found;
  int depth = 0;
  for (std::size_t at = open; at < text.size(); ++at) {
    if (!found.empty() && at - found.front() > MAX_LOOK_AHEAD) break;
    const char c = text[at];
    const bool isOpening = c == '(' || c == '[' || c == '{';
    const bool isClosing = c == ')' || c == ']' || c == '}';
    if (isOpening) ++depth;
    if (isClosing && --depth == 0) return found;
    if (c == ';') {
      found.push_back(at);
    } else if (!isOpening && !isClosing && !isBlank(c) && c != ',' &&
               !zn::char_class::is(c, zn::char_class::NUMBER)) {
      break;
    }
  }
  return {};
}

std::size_t resumePoint(Text text, const Statement& statement) {
  const bool isPair = isPairLine(text, statement.begin);
  const auto isBegin = [&](std::size_t line) {
    return looksLikeStatement(text, line) ||
           (isPair && isPairLine(text, text.find_first_not_of(" \t", line)));
  };
  // The lines end with the statement, because the text behind it may be one long line.
  const Text lines = text.substr(0, statement.end);
  std::size_t line = endOfLine(lines, statement.begin) + 1;
  while (line < statement.end && !isBegin(line)) line = endOfLine(lines, line) + 1;
  return std::min(line, statement.end);
}

}  // namespace vsa_tools
