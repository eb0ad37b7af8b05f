#include "vsa/lex/statement_scanner.h"

#include <cstddef>
#include <utility>

#include <vsa/foundation/char_class.h>
#include "foundation/text/letter_case.h"
#include "vsa/lex/lexer_fast_path.h"
#include "vsa/lex/token_scan.h"

namespace zn::korvo_sdk::impl {

using Type = Token::Type;
using Kind = SimpleStatement::Kind;

namespace {

std::uintptr_t addressOf(const char* at) {
  return reinterpret_cast<std::uintptr_t>(at);
}

std::string_view between(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

SimpleStatement::SimpleStatement()
    : pathTokens{{Type::Id, String()}, {Type::Dot, String('.')}, {Type::Id, String()}} {
}

// --- places ---

// The column of the character before `at`.
inline std::int32_t StatementScanner::Place::columnBefore() const noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(addressOf(at) - lineBegin));
}

inline void StatementScanner::Place::pass(const LineFeeds& feeds) noexcept {
  if (feeds.count == 0) return;
  line = detail::wrappingSum(line, feeds.count);
  lineBegin = addressOf(feeds.last + 1);
}

// The place after a character with that position, which is no line feed.
inline StatementScanner::Place StatementScanner::placeAfter(const char* at, std::int32_t line,
                                                            std::int32_t column) noexcept {
  return {at, line, addressOf(at) - static_cast<std::uint32_t>(column)};
}

StatementScanner::StatementScanner(Lexer& lexer, const Token& consumed) noexcept : lexer_(lexer) {
  const std::uint32_t ahead = static_cast<std::uint32_t>(lexer.index) - consumed.endIndex;
  if (consumed.type == Type::Eof || lexer.windowBegin == lexer.windowLast()) return;
  if (static_cast<std::size_t>(lexer.windowBegin - lexer.windowStart) < ahead) return;
  first_ = lexer.windowBegin - ahead;
  firstIndex_ = static_cast<std::int32_t>(consumed.endIndex);
  place_ = placeAfter(first_, consumed.line, consumed.column);
  last_ = lexer.windowLast();
}

bool StatementScanner::scan(SimpleStatement& out) {
  if (last_ == nullptr) return false;
  Place place = place_;
  if (!statement(place, out)) return false;
  out.end = place.at;
  out.line = place.line;
  out.column = place.columnBefore();
  out.ahead = endOfLookahead(place);
  return out.ahead != nullptr;
}

void StatementScanner::accept(const SimpleStatement& statement) noexcept {
  place_ = placeAfter(statement.end, statement.line, statement.column);
  lexer_.windowBegin = ahead_ = statement.ahead;
}

// The third token after the statement is most often in the path of the next one: the forms of
// tokens that cannot be there are left to the lexer.
const char* StatementScanner::endOfLookahead(Place place) const noexcept {
  for (int i = 0; i < 3; ++i) {
    if (!skipWhite(place)) return nullptr;
    const Type type = firstOf(*place.at);
    if (type == Type::Id) {
      place.at = endOfName(place.at + 1, last_);
    } else if (isOneCharacter(type)) {
      ++place.at;
    } else if (type == Type::Comment) {
      place.at = findStop(place.at, last_, '\n', '\r');
    } else {
      return nullptr;
    }
    if (place.at == last_) return nullptr;
  }
  return place.at;
}

void StatementScanner::moveBack() noexcept {
  lexer_.line = place_.line;
  lexer_.column = place_.columnBefore();
  lexer_.index = detail::wrappingSum(firstIndex_, static_cast<std::size_t>(place_.at - first_));
  lexer_.previous = place_.at[-1];
  lexer_.windowBegin = place_.at;
  lexer_.lookaheadChar = *place_.at;
}

// If a scene has read the file, the lexer has no window any more. It has one again for the
// look-ahead, which the scene has not read, and the byte after it.
void StatementScanner::readLookahead(ds::Vector<Token>& tokens) {
  const bool isKept = isWindowKept();
  moveBack();
  if (!isKept) lexer_.windowEnd = ahead_ + 2;
  for (Token& token : tokens) lexer_.nextToken(token);
  if (!isKept) lexer_.windowBegin = lexer_.windowEnd = nullptr;
}

void StatementScanner::skipLookahead() noexcept {
  const bool isKept = isWindowKept();
  moveBack();
  lexer_.consumeBytes(static_cast<std::size_t>(ahead_ - place_.at));
  if (!isKept) lexer_.windowBegin = nullptr;
}

// --- characters ---

// False at the end of the window. Otherwise `place` is at the first character of a token.
inline bool StatementScanner::skipWhite(Place& place) const noexcept {
  for (; char_class::is(*place.at, char_class::WHITE); ++place.at) {
    if (place.at == last_) return false;
    if (*place.at == '\n') place.pass({1, place.at});
  }
  return place.at != last_;
}

inline bool StatementScanner::skip(Place& place, char c) const noexcept {
  if (!skipWhite(place) || *place.at != c) return false;
  ++place.at;
  return true;
}

// A name or a literal that is a word, at `place`. Invalid if there is none.
inline Type StatementScanner::wordType(Place& place, String& out) {
  if (!skipWhite(place) || firstOf(*place.at) != Type::Id) return Type::Invalid;
  const char* const begin = place.at;
  place.at = endOfName(begin + 1, last_);
  return place.at == last_ ? Type::Invalid : lexer_.texts_.intern(between(begin, place.at), out);
}

inline bool StatementScanner::name(Place& place, String& out) {
  return wordType(place, out) == Type::Id;
}

// --- statements ---

bool StatementScanner::statement(Place& place, SimpleStatement& out) {
  if (!skipWhite(place)) return false;
  out.begin = place.at;
  switch (firstOf(*place.at)) {
    case Type::Comment:
      return comment(place, out);
    case Type::Dot:
      ++place.at;
      out.isWith = true;
      return assignment(place, out);
    case Type::Id:
      return named(place, out);
    default:
      return false;
  }
}

// "#" and the rest of the line
bool StatementScanner::comment(Place& place, SimpleStatement& out) {
  const char* const begin = place.at;
  place.at = findStop(begin, last_, '\n', '\r');
  const std::string_view text = between(begin, place.at);
  if (place.at == last_) return false;
  out.kind = Kind::Comment;
  out.text = lexer_.texts_.copy(text.substr(0, text.find('\0')));
  return true;
}

// declaration | name "." assignment
bool StatementScanner::named(Place& place, SimpleStatement& out) {
  // A declaration is told from a path by the character after the first name.
  String& first = out.pathTokens[0].text;
  if (!name(place, first) || !skipWhite(place)) return false;
  if (*place.at != '.') {
    std::swap(out.text, first);
    return declaration(place, out);
  }
  ++place.at;
  out.isWith = false;
  return assignment(place, out);
}

// type name (";" | ":")    The parser reads directives.
bool StatementScanner::declaration(Place& place, SimpleStatement& out) {
  if (!name(place, out.name) || !skipWhite(place)) return false;
  out.kind = Kind::Declaration;
  out.isWith = *place.at == ':';
  if (!out.isWith && *place.at != ';') return false;
  ++place.at;
  const std::string_view type = out.text.view();
  return out.isWith || (!isWord(type, "remove") && !isWord(type, "define"));
}

// input ("=" value | "|" "=" connection) ";"
bool StatementScanner::assignment(Place& place, SimpleStatement& out) {
  if (!name(place, out.pathTokens[2].text) || !skipWhite(place)) return false;
  const char operation = *place.at++;
  if (operation == '=') return value(place, out) && skip(place, ';');
  return operation == '|' && skip(place, '=') && connection(place, out) && skip(place, ';');
}

// number | string | word
bool StatementScanner::value(Place& place, SimpleStatement& out) {
  if (!skipWhite(place)) return false;
  const char* const begin = place.at;
  const Type type = firstOf(*begin);
  if (type == Type::Id) return word(place, out);
  if (type == Type::Int) {
    const NumberEnd number = endOfNumber(begin + 1, last_);
    place.at = number.at;
    out.valueType = number.isReal ? Type::Real : Type::Int;
  } else if (type == Type::Str) {
    const StringEnd string = endOfString(begin, last_);
    if (string.at == nullptr) return false;
    place.at = string.at;
    place.pass(string.feeds);
    out.valueType = type;
  } else {
    return false;
  }
  out.kind = Kind::Value;
  out.value = between(begin, place.at);
  return place.at != last_;
}

// keyword "(" numbers ")" | "true" | "false" | "null" | name
bool StatementScanner::word(Place& place, SimpleStatement& out) {
  const char* const begin = place.at;
  const char* const end = endOfName(begin + 1, last_);
  if (end == last_) return false;
  if (*end == '(') {
    place.at = detail::endOfShortList(end, last_, ')');
    if (place.at == nullptr) return false;
    out.kind = Kind::Value;
    out.valueType = Type::Id;
    out.value = between(begin, end);
    out.list = between(end + 1, place.at - 1);
    return true;
  }
  switch (out.valueType = wordType(place, out.source)) {
    case Type::Null:
      out.source = String();
      [[fallthrough]];
    case Type::Id:
      out.kind = Kind::Reference;
      return true;
    case Type::True:
    case Type::False:
      out.kind = Kind::Value;
      out.value = out.valueType == Type::True ? "true" : "false";
      return true;
    default:
      return false;
  }
}

// "null" | name "." name
bool StatementScanner::connection(Place& place, SimpleStatement& out) {
  out.kind = Kind::Connection;
  const Type type = wordType(place, out.source);
  if (type == Type::Null) {
    out.output = String();
    return true;
  }
  return type == Type::Id && skip(place, '.') && name(place, out.output);
}

}  // namespace zn::korvo_sdk::impl
