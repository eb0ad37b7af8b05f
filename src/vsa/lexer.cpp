// Characters to tokens: one flat choice over small readers.
#include "vsa/lexer.h"

#include <cstring>
#include <string_view>

#include "foundation/char_class.h"
#include "vsa/byte_scan.h"
#include "vsa/list_run.h"
#include "vsa/messages.h"

namespace zn::korvo_sdk::impl {

namespace {

using char_class::is;
using Type = Token::Type;

// From this size on the collected characters themselves become the token's text.
constexpr std::uint64_t ADOPTED_BYTES = 1024;
// Runs are passed in steps that stay in the processor's nearest cache.
constexpr std::size_t RUN_BYTES = 16384;

std::int32_t wrappingSum(std::int32_t a, std::size_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

bool isBracket(char c) {
  return c == '(' || c == ')' || c == '[' || c == ']' || c == '{' || c == '}';
}

// The characters up to the first NUL among them.
std::string_view textOf(const ds::Vector<char>& chars) {
  const std::string_view all(chars.data, static_cast<std::size_t>(chars.size));
  return all.substr(0, all.find('\0'));
}

// Whether a word of the format, given in lower case, is written in `text`, in any letter case.
bool isWord(std::string_view text, std::string_view word) {
  if (text.size() != word.size() || toLowerCase(text[0]) != word[0]) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (toLowerCase(text[i]) != word[i]) return false;
  }
  return true;
}

bool isRealMarker(char c) {
  return c == '.' || c == 'f' || c == 'F' || c == 'n' || c == 'N' || c == 'a' || c == 'A' ||
         c == 'i' || c == 'I';
}

bool isReal(std::string_view number) {
  for (const char c : number) {
    if (isRealMarker(c)) return true;
  }
  return false;
}

}  // namespace

struct Lexer::ListKind {
  char open;
  char close;
  const char* plural;
  const char* singular;
  Type type;
};

// --- positions ---

char Lexer::step(char next) noexcept {
  if (previous == '\n') {
    line = wrappingSum(line, 1);
    column = 1;
  } else {
    column = wrappingSum(column, 1);
  }
  previous = lookaheadChar;
  index = wrappingSum(index, 1);
  lookaheadChar = next;
  return previous;
}

// Consumes one byte of a window that holds more.
char Lexer::passOne() noexcept {
  ++windowBegin;
  return step(*windowBegin);
}

// Consumes `count` bytes of the window, fewer than it holds, with no line feed before the last.
void Lexer::passInLine(std::size_t count) noexcept {
  if (previous == '\n') {
    line = wrappingSum(line, 1);
    column = 0;
  }
  column = wrappingSum(column, count);
  previous = windowBegin[count - 1];
  index = wrappingSum(index, count);
  windowBegin += count;
  lookaheadChar = *windowBegin;
}

// Consumes `count` bytes of the window, fewer than it holds. The column counts on from the last
// line feed that stands before the last of them.
void Lexer::pass(std::size_t count) noexcept {
  if (count == 1) return passInLine(1);
  const LineFeeds feeds = countLineFeeds(windowBegin, windowBegin + count - 1);
  if (feeds.count != 0) {
    const std::size_t upToFeed = static_cast<std::size_t>(feeds.last + 1 - windowBegin);
    line = wrappingSum(line, feeds.count - 1 + (previous == '\n' ? 1 : 0));
    index = wrappingSum(index, upToFeed);
    windowBegin += upToFeed;
    previous = '\n';
    count -= upToFeed;
  }
  passInLine(count);
}

// --- collecting characters ---

void Lexer::roomFor(std::size_t count) {
  const std::uint64_t needed = chars_.size + count;
  if (needed <= chars_.capacity) return;
  chars_.reserve(static_cast<unsigned long>(needed < 2 * chars_.size ? 2 * chars_.size : needed));
}

void Lexer::appendRun(std::size_t count) {
  roomFor(count);
  std::memcpy(chars_.data + chars_.size, windowBegin, count);
  chars_.size += count;
}

void Lexer::take() {
  chars_.push_back(consume());
}

// The characters ahead, the first whatever it is and the others in one of `classes`, when all of
// them and the one behind them are in the window; else nothing. None of the classes holds a line
// feed.
std::string_view Lexer::wordAhead(unsigned classes) const noexcept {
  const char* at = windowBegin;
  if (windowEnd - at < 2 || *at == '\0') return {};
  do {
    if (++at == windowEnd) return {};
  } while (is(*at, classes));
  return {windowBegin, static_cast<std::size_t>(at - windowBegin)};
}

// Takes characters as long as they are in one of `classes`, none of which holds a line feed.
void Lexer::takeRun(unsigned classes) {
  while (is(lookaheadChar, classes)) {
    if (windowEnd - windowBegin < 2) {
      take();
      continue;
    }
    const char* const last = windowEnd - 1;
    const char* at = windowBegin + 1;
    while (at < last && is(*at, classes)) ++at;
    const std::size_t count = static_cast<std::size_t>(at - windowBegin);
    appendRun(count);
    passInLine(count);
  }
}

// Takes characters up to `a`, `b` or the end.
void Lexer::takeUntil(char a, char b) {
  while (!atEnd() && lookaheadChar != a && lookaheadChar != b) {
    if (windowEnd - windowBegin < 2) {
      take();
      continue;
    }
    const char* const last = windowEnd - 1;
    const char* const limit =
        static_cast<std::size_t>(last - windowBegin) > RUN_BYTES ? windowBegin + RUN_BYTES : last;
    const std::size_t count =
        static_cast<std::size_t>(findStop(windowBegin, limit, a, b) - windowBegin);
    appendRun(count);
    pass(count);
  }
}

void Lexer::skipWhite() {
  while (is(lookaheadChar, char_class::WHITE)) {
    if (windowEnd - windowBegin < 2) {
      consume();
      continue;
    }
    const char* const last = windowEnd - 1;
    const char* at = windowBegin + 1;
    while (at < last && is(*at, char_class::WHITE)) ++at;
    pass(static_cast<std::size_t>(at - windowBegin));
  }
}

// --- tokens ---

Token Lexer::token(Type type) {
  const char c = windowEnd - windowBegin < 2 ? consume() : passOne();
  return {type, texts_.character(c), line, column};
}

Token Lexer::token(Type type, const ds::Vector<char>& chars) const {
  return {type, String::copyOf(textOf(chars)), line, column};
}

// The token of the collected characters.
Token Lexer::taken(Type type) {
  if (chars_.size < ADOPTED_BYTES) return token(type, chars_);
  return {type, String::adopt(std::move(chars_)), line, column};
}

Token Lexer::eof() const {
  return {Type::Eof, String("EOF"), line, column};
}

Token Lexer::invalidToken() const {
  return {Type::Invalid, String::format(INVALID_TOKEN, line, column, lookaheadChar), line, column};
}

Token Lexer::unexpectedEof(const String& what) const {
  return {Type::Eof, String::format(UNEXPECTED_EOF, what.buf()), line, column};
}

Token Lexer::invalidListToken(const String& what) const {
  return {Type::Invalid,
          String::format(INVALID_LIST_TOKEN, what.buf(), line, column, lookaheadChar), line,
          column};
}

Token Lexer::nextToken() {
  skipWhite();
  if (atEnd()) return eof();
  switch (lookaheadChar) {
    case '"':
      return string();
    case '#':
      return comment();
    case '(':
      return parens();
    case '{':
      return braces();
    case '[':
      return brackets();
    case '\'':
      return token(Type::Quote);
    case '*':
      return token(Type::Star);
    case '+':
      return token(Type::Plus);
    case ',':
      return token(Type::Comma);
    case '.':
      return token(Type::Dot);
    case '/':
      return token(Type::Slash);
    case ':':
      return token(Type::Colon);
    case ';':
      return token(Type::Semicolon);
    case '=':
      return token(Type::Equals);
    case '\\':
      return token(Type::Backslash);
    case '|':
      return token(Type::Pipe);
    case '-':
      return number();
    case '_':
      return id();
    default:
      if (String::isLetter(lookaheadChar)) return id();
      return String::isDigit(lookaheadChar) ? number() : invalidToken();
  }
}

// "#" to the end of the line, which is left to the white space that follows.
Token Lexer::comment() {
  chars_.clear();
  takeUntil('\n', '\r');
  return taken(Type::Comment);
}

// '"' ... '"', kept as written. A backslash makes one unit with a backslash or a quote after it.
// The opening quote is the first character taken, so it closes nothing.
Token Lexer::string() {
  chars_.clear();
  do {
    if (atEnd()) return unexpectedEof("STRING");
    take();
    if (previous == '\\' && (lookaheadChar == '\\' || lookaheadChar == '"')) {
      take();
    } else {
      takeUntil('"', '\\');
    }
  } while (lookaheadChar != '"');
  take();
  return taken(Type::Str);
}

// A letter or "_", then letters, digits and "_".
Token Lexer::id() {
  if (atEnd()) return unexpectedEof("ID");
  if (const std::string_view word = wordAhead(char_class::NAME); !word.empty()) {
    passInLine(word.size());
    return name(word);
  }
  chars_.clear();
  take();
  takeRun(char_class::NAME);
  return name(textOf(chars_));
}

// Names come again and again: they are shared.
Token Lexer::name(std::string_view text) {
  if (isWord(text, "true")) return {Type::True, texts_.text("true"), line, column};
  if (isWord(text, "false")) return {Type::False, texts_.text("false"), line, column};
  if (isWord(text, "null")) return {Type::Null, texts_.text("null"), line, column};
  return {Type::Id, texts_.text(text), line, column};
}

// "-" or a digit, then everything that numbers are written with. What it is worth is decided later.
Token Lexer::number() {
  if (atEnd()) return unexpectedEof("NUMBER");
  if (const std::string_view word = wordAhead(char_class::NUMBER); !word.empty()) {
    passInLine(word.size());
    return {isReal(word) ? Type::Real : Type::Int, String::copyOf(word), line, column};
  }
  chars_.clear();
  take();
  takeRun(char_class::NUMBER);
  const Type type =
      isReal({chars_.data, static_cast<std::size_t>(chars_.size)}) ? Type::Real : Type::Int;
  return taken(type);
}

bool Lexer::isNumberChar() const {
  return is(lookaheadChar, char_class::NUMBER);
}

// --- lists ---

Token Lexer::parens() {
  return bracketedList({'(', ')', "PARENS", "PAREN", Type::Parens});
}

Token Lexer::braces() {
  return bracketedList({'{', '}', "BRACES", "BRACE", Type::Braces});
}

// "[" ... "]", kept as written. There is no nesting: the first "]" after a character closes it.
Token Lexer::brackets() {
  chars_.clear();
  do {
    if (atEnd()) return unexpectedEof("BRACKETS");
    const bool isAllowed = lookaheadChar == '[' || lookaheadChar == ']' || lookaheadChar == '*' ||
                           is(lookaheadChar, char_class::DIGIT | char_class::WHITE);
    if (!isAllowed) return invalidListToken("BRACKET");
    take();
  } while (lookaheadChar != ']');
  take();
  return taken(Type::Brackets);
}

// A whole list as one token: its elements with single blanks between them. Lists of the same kind
// inside it are flattened, other brackets and commas only separate.
Token Lexer::bracketedList(const ListKind& kind) {
  chars_.clear();
  std::uint64_t depth = 0;
  while (true) {
    if (atEnd()) return unexpectedEof(kind.plural);
    if (!isBracket(lookaheadChar) && lookaheadChar != ',' && !isNumberChar() &&
        !is(lookaheadChar, char_class::WHITE)) {
      return invalidListToken(kind.singular);
    }
    if (chars_.size != 0 && lookaheadChar == kind.open) {
      consume();
      ++depth;
    } else if (depth > 0 && lookaheadChar == kind.close) {
      consume();
      --depth;
    } else {
      list(chars_, kind.open, kind.close);
    }
    takeListRun();
    if (depth == 0 && lookaheadChar == kind.close) {
      take();
      return taken(kind.type);
    }
  }
}

void Lexer::list(ds::Vector<char>& chars, char open, char close) {
  const char c = lookaheadChar;
  if (c == open || c == close || atEnd()) {
    chars.push_back(consume());
  } else if (is(c, char_class::WHITE)) {
    skipWhite();
    separate(chars, open, close);
  } else if (isBracket(c) || c == ',') {
    consume();
    separate(chars, open, close);
  } else {
    chars.push_back(consume());
  }
}

// One blank between two elements, none beside the brackets.
void Lexer::separate(ds::Vector<char>& chars, char open, char close) {
  const char last = chars.size == 0 ? '\0' : chars[chars.size - 1];
  if (is(last, char_class::WHITE) || last == open || lookaheadChar == close) return;
  chars.push_back(' ');
}

// Takes what it can of the numbers ahead in large steps. It stops behind a number character, so the
// reader above goes on as if it had come there one character at a time.
void Lexer::takeListRun() {
  while (isNumberChar() && windowEnd - windowBegin >= 2) {
    const std::size_t available = static_cast<std::size_t>(windowEnd - 1 - windowBegin);
    const std::size_t count = available < RUN_BYTES ? available : RUN_BYTES;
    roomFor(count + LIST_RUN_SLACK);
    char* const to = chars_.data + chars_.size;
    const ListRun run = copyListRun(windowBegin, windowBegin + count, to);
    chars_.size += static_cast<std::uint64_t>(run.to - to);
    pass(static_cast<std::size_t>(run.from - windowBegin));
  }
}

}  // namespace zn::korvo_sdk::impl
