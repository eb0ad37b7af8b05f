#include "vsa/lex/statement_scanner.h"

#include <cstddef>

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

// Returns the column of the character before `at`. `lineBegin` is the address of the first
// character of the line.
std::int32_t columnIn(std::uintptr_t lineBegin, const char* at) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(addressOf(at) - lineBegin));
}

std::string_view between(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

StatementScanner::StatementScanner(Lexer& lexer, const Token& consumed) noexcept : lexer_(lexer) {
  if (lexer.windowBegin == lexer.windowLast()) return;
  // Requires that four tokens end in this block: `consumed` and the three tokens after it. So the
  // bytes between them are in memory. They are fewer than 2^32, and the difference below is right
  // even if `index` wrapped around.
  if (!lexer.progress.hasInBlock(4)) return;
  const std::uint32_t ahead = static_cast<std::uint32_t>(lexer.index) - consumed.endIndex;
  first_ = end_ = lexer.windowBegin - ahead;
  firstIndex_ = static_cast<std::int32_t>(consumed.endIndex);
  endLine_ = consumed.line;
  endColumn_ = consumed.column;
  last_ = lexer.windowLast();
  moveToEnd();
  hasNext_ = readNext(end_);
}

bool StatementScanner::scan(SimpleStatement& out) {
  if (!hasNext_) return false;
  out.end = statement(out);
  if (out.end == nullptr) return false;
  out.literal.bytesAfter = static_cast<std::size_t>(last_ - out.end);
  out.line = line_;
  out.column = columnIn(lineBegin_, out.end);
  hasNext_ = readNext(out.end);
  return hasNext_;
}

// --- the lexer ---

void StatementScanner::accept(const SimpleStatement& statement) noexcept {
  end_ = statement.end;
  endLine_ = statement.line;
  endColumn_ = statement.column;
  lexer_.windowBegin = ahead_ = next_[2].end;
}

void StatementScanner::moveBack() noexcept {
  lexer_.line = endLine_;
  lexer_.column = endColumn_;
  lexer_.index = detail::wrappingSum(firstIndex_, static_cast<std::size_t>(end_ - first_));
  lexer_.previous = end_[-1];
  lexer_.windowBegin = end_;
  lexer_.lookaheadChar = *end_;
}

// Moves the lexer back and reads the tokens. If the scene has read from the file, the window is
// empty. This function then sets a temporary window, so that the lexer does not read from the
// source. The window ends two bytes after the third token, because the fast path of the lexer reads
// a word only if two more bytes follow it. All these bytes are still in memory.
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
  lexer_.consumeBytes(static_cast<std::size_t>(ahead_ - end_));
  if (!isKept) lexer_.windowBegin = nullptr;
}

// --- characters ---

// Moves the scanned position to the end of the last accepted statement.
void StatementScanner::moveToEnd() noexcept {
  line_ = endLine_;
  lineBegin_ = addressOf(end_) - static_cast<std::uint32_t>(endColumn_);
}

inline void StatementScanner::pass(const LineFeeds& feeds) noexcept {
  if (feeds.count == 0) return;
  line_ = detail::wrappingSum(line_, feeds.count);
  lineBegin_ = addressOf(feeds.last + 1);
}

// Returns the first character of the next token. Returns null if it is not in the window or is the
// last byte of the window.
inline const char* StatementScanner::skipWhite(const char* at) noexcept {
  if (at == nullptr) return nullptr;
  const char* const last = last_;
  for (; char_class::is(*at, char_class::WHITE); ++at) {
    if (at == last) return nullptr;
    if (*at == '\n') pass({1, at});
  }
  return at != last ? at : nullptr;
}

inline const char* StatementScanner::skip(const char* at, char c) noexcept {
  at = skipWhite(at);
  return at != nullptr && *at == c ? at + 1 : nullptr;
}

// Returns the end of a word. A word is a name or one of the literals `true`, `false` and `null`.
inline const char* StatementScanner::endOfWord(const char* at) const noexcept {
  if (at == nullptr || firstOf(*at) != Type::Id) return nullptr;
  const char* const end = endOfName(at + 1, last_);
  return end != last_ ? end : nullptr;
}

// Sets `out` to the name. Returns false if the place is not a name, but for example a literal such
// as `true`. First compares the name with `out`, because this is faster than a look-up in the pool.
// Often `out` already has this name: successive statements are usually about one node.
inline bool StatementScanner::name(const Place& place, String& out) {
  if (place.type != Type::Id) return false;
  if (out.view() == place.text()) return true;
  if (lexer_.texts().intern(place.text(), out) == Type::Id) return true;
  out = String();
  return false;
}

// Finds the three tokens after a statement that ends at `at`. Returns false if one of them is not
// in the window, or if it is not a word, a single character or a comment. The scanner then does not
// recognise the statement that ends at `at`, and the parser reads it from tokens.
bool StatementScanner::readNext(const char* at) noexcept {
  for (Place& place : next_) {
    at = skipWhite(at);
    if (at == nullptr) return false;
    place.begin = at;
    place.type = firstOf(*at);
    if (place.type == Type::Id) {
      at = endOfName(at + 1, last_);
    } else if (isOneCharacter(place.type)) {
      ++at;
    } else if (place.type == Type::Comment) {
      at = endOfComment(at, last_);
      if (*at == '\0') return false;
    } else {
      return false;
    }
    place.end = at;
  }
  return at != last_;
}

// --- statements ---

const char* StatementScanner::statement(SimpleStatement& out) {
  switch (next_[0].type) {
    case Type::Comment:
      return comment(out);
    case Type::Dot:
      out.isWith = true;
      return assignment(next_[1], next_[2].begin, out);
    case Type::Id:
      return named(out);
    default:
      return nullptr;
  }
}

// Recognises "#" and the rest of the line. Scans the white space before the comment again to find
// the line of the comment, because readNext has also counted the line feeds after the comment.
const char* StatementScanner::comment(SimpleStatement& out) {
  moveToEnd();
  skipWhite(end_);
  out.kind = Kind::Comment;
  out.text = lexer_.texts().copy(next_[0].text());
  return next_[0].end;
}

// Recognises: declaration | name "." assignment
const char* StatementScanner::named(SimpleStatement& out) {
  if (next_[1].type != Type::Dot) return declaration(out);
  out.isWith = false;
  if (!name(next_[0], out.pathTokens[0].text)) return nullptr;
  return assignment(next_[2], skipWhite(next_[2].end), out);
}

// Recognises: type name (";" | ":"), except the directives remove and define, which the parser
// reads. Does not intern the name of the node, because most such names are new. Stores the name as
// the node of the next path, because the statements after a declaration usually refer to its node.
// The two save 3 % and 4 % of the instructions of the benchmark links.
const char* StatementScanner::declaration(SimpleStatement& out) {
  const std::string_view newName = next_[1].text();
  if (next_[1].type != Type::Id || typeOfWord(newName) != Type::Id) return nullptr;
  if (!name(next_[0], out.text)) return nullptr;
  out.name = lexer_.texts().copy(newName);
  out.pathTokens[0].text = out.name;
  out.kind = Kind::Declaration;
  out.isWith = next_[2].type == Type::Colon;
  if (out.isWith) return next_[2].end;
  const std::string_view type = out.text.view();
  if (next_[2].type != Type::Semicolon || isWord(type, "remove") || isWord(type, "define")) {
    return nullptr;
  }
  return next_[2].end;
}

// Recognises: input ("=" value | "|" "=" connection) ";"
const char* StatementScanner::assignment(const Place& input, const char* sign,
                                         SimpleStatement& out) {
  if (sign == nullptr || !name(input, out.pathTokens[2].text)) return nullptr;
  if (*sign == '=') return skip(value(sign + 1, out), ';');
  return *sign == '|' ? skip(connection(skip(sign + 1, '='), out), ';') : nullptr;
}

// Recognises: number | string | word
const char* StatementScanner::value(const char* at, SimpleStatement& out) {
  at = skipWhite(at);
  if (at == nullptr) return nullptr;
  const char* end = nullptr;
  out.literal.type = firstOf(*at);
  if (out.literal.type == Type::Int) {
    const NumberEnd number = endOfNumber(at + 1, last_);
    end = number.at != last_ ? number.at : nullptr;
    if (number.isReal) out.literal.type = Type::Real;
  } else if (out.literal.type == Type::Str) {
    const StringEnd string = endOfString(at, last_);
    end = string.at != last_ ? string.at : nullptr;
    out.literal.hasBackslash = string.hasBackslash;
    pass(string.feeds);
  } else if (out.literal.type == Type::Id) {
    return word(at, out);
  }
  if (end == nullptr) return nullptr;
  out.kind = Kind::Value;
  out.literal.text = between(at, end);
  return end;
}

// Recognises: keyword "(" numbers ")" | "true" | "false" | "null" | name
const char* StatementScanner::word(const char* at, SimpleStatement& out) {
  const char* const end = endOfWord(at);
  if (end == nullptr) return nullptr;
  const std::string_view word = between(at, end);
  if (*end == '(') {
    const char* const listEnd = detail::endOfShortList(end, last_, ')');
    if (listEnd == nullptr) return nullptr;
    out.kind = Kind::Value;
    out.literal.text = word;
    out.literal.list = between(end + 1, listEnd - 1);
    return listEnd;
  }
  out.literal.type = typeOfWord(word);
  if (out.literal.type == Type::True || out.literal.type == Type::False) {
    out.kind = Kind::Value;
    out.literal.text = out.literal.type == Type::True ? "true" : "false";
  } else {
    out.kind = Kind::Reference;
    out.source = out.literal.type == Type::Null ? std::string_view() : word;
  }
  return end;
}

const char* StatementScanner::output(const char* at, String& out) {
  const char* const end = endOfWord(at);
  return end != nullptr && name({at, end, Type::Id}, out) ? end : nullptr;
}

// Recognises: "null" | name "." name. Does not intern the source, because most sources differ from
// statement to statement.
const char* StatementScanner::connection(const char* at, SimpleStatement& out) {
  out.kind = Kind::Connection;
  at = skipWhite(at);
  const char* const end = endOfWord(at);
  if (end == nullptr) return nullptr;
  out.source = between(at, end);
  const Type type = typeOfWord(out.source);
  if (type == Type::Id) return output(skipWhite(skip(end, '.')), out.output);
  out.source = "null";
  out.output = String();
  return type == Type::Null ? end : nullptr;
}

}  // namespace zn::korvo_sdk::impl
