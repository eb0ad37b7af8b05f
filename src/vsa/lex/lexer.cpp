// The lexer converts characters to tokens. One switch selects the function that reads a token of
// each type, unless the fast path reads the token (see lexer_fast_path.h).
#include "vsa/lex/lexer.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "diagnostics/emitter.h"

#include <vsa/foundation/char_class.h>
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/lexer_fast_path.h"
#include "vsa/lex/list_normalizer.h"
#include "vsa/lex/token_scan.h"

namespace zn::korvo_sdk::impl {

namespace {

using char_class::is;
using Type = Token::Type;

// The minimum size of a token text that adopts the buffer of the collected characters. A shorter
// text is a copy of the characters. Adopting saves 5 % of the time of the benchmark
// buffer_literal/float.
constexpr std::uint64_t MIN_ADOPTED_BYTES = 1024;
// The maximum number of bytes to collect in one step. The bytes of a step fit into the L1 cache.
constexpr std::ptrdiff_t MAX_STEP_BYTES = 16384;

// Returns the characters before the first NUL.
std::string_view textOf(const ds::Vector<char>& chars) {
  const std::string_view all(chars.data, static_cast<std::size_t>(chars.size));
  return all.substr(0, all.find('\0'));
}

}  // namespace

struct Lexer::ListKind {
  char open;
  char close;
  const char* plural;
  const char* singular;
  Type type;
};

// --- collecting characters ---

void Lexer::collect() {
  chars_.push_back(consume());
}

// Collects characters while they are in one of `classes`. Most names and numbers are read by the
// fast path, so this function collects one character at a time.
void Lexer::collectRun(unsigned classes) {
  while (is(lookaheadChar, classes)) collect();
}

// Collects characters up to the next `a` or `b`, or up to the end of the input. Copies runs of
// buffered bytes, which saves 2 % of the time of the benchmark text from a file.
void Lexer::collectUntil(char a, char b) {
  while (!atEnd() && lookaheadChar != a && lookaheadChar != b) {
    if (windowEnd - windowBegin < 2) {
      collect();
      continue;
    }
    const char* const limit = windowBegin + std::min(windowEnd - 1 - windowBegin, MAX_STEP_BYTES);
    const auto count = static_cast<std::size_t>(findStop(windowBegin, limit, a, b) - windowBegin);
    chars_.reserveAdditional(count);
    std::memcpy(chars_.data + chars_.size, windowBegin, count);
    chars_.size += count;
    consumeBytes(count);
  }
}

void Lexer::skipWhite() {
  while (is(lookaheadChar, char_class::WHITE)) consume();
}

// --- tokens ---

Token Lexer::token(Type type) {
  const char c = consume();
  return {type, texts_.character(c), line, column};
}

Token Lexer::token(Type type, const ds::Vector<char>& chars) const {
  return {type, String::copyOf(textOf(chars)), line, column};
}

// Creates a token from the collected characters.
Token Lexer::collectedToken(Type type) {
  if (chars_.size < MIN_ADOPTED_BYTES) return token(type, chars_);
  return {type, String::adopt(std::move(chars_)), line, column};
}

// Creates a list token from the collected characters. A list contains no NUL, because normalisation
// removes NUL as white space. adoptWhole therefore need not search for one, which saves 3 % of the
// time of the benchmark floats.
Token Lexer::collectedList(Type type) {
  if (chars_.size < MIN_ADOPTED_BYTES) return token(type, chars_);
  return {type, String::adoptWhole(std::move(chars_)), line, column};
}

Token Lexer::eof() const {
  return {Type::Eof, String("EOF"), line, column};
}

Token Lexer::invalidToken() const {
  return invalid(DiagnosticId::InvalidToken, String());
}

Token Lexer::invalidListToken(const String& what) const {
  return invalid(DiagnosticId::InvalidListToken, what);
}

// Returns an Invalid token for the lookahead. The token has the position of the character before
// the lookahead.
Token Lexer::invalid(DiagnosticId id, const String& list) const {
  problem_ = {id,
              diagnostic_detail::formatMessage(rowOf(id).format, lookaheadChar),
              line,
              column,
              progress.offsetOf(index),
              list,
              {String(lookaheadChar)}};
  return {Type::Invalid, problem_.logLine(), line, column};
}

Token Lexer::unexpectedEof(const String& what) const {
  const char* const format = rowOf(DiagnosticId::UnexpectedEof).format;
  problem_ = {.id = DiagnosticId::UnexpectedEof,
              .text = diagnostic_detail::formatMessage(format, what.buf()),
              .line = line,
              .column = column,
              .arguments = {what}};
  return {Type::Eof, problem_.text, line, column};
}

Token Lexer::nextToken() {
  Token token;
  nextToken(token);
  return token;
}

Token Lexer::readByCharacters() {
  skipWhite();
  if (atEnd()) return eof();
  const Type type = firstOf(lookaheadChar);
  switch (type) {
    case Type::Str:
      return string();
    case Type::Comment:
      return comment();
    case Type::Parens:
      return parens();
    case Type::Braces:
      return braces();
    case Type::Brackets:
      return brackets();
    case Type::Int:
      return number();
    case Type::Id:
      return id();
    case Type::Invalid:
      return invalidToken();
    default:
      return token(type);
  }
}

// Reads from "#" to the end of the line or of the input. Does not consume the line break.
Token Lexer::comment() {
  chars_.clear();
  collectUntil('\n', '\r');
  return collectedToken(Type::Comment);
}

// Reads '"' ... '"' and keeps it as written. A backslash and the backslash or quote after it are
// one escape sequence. The loop collects a character before it checks for a quote, so the opening
// quote does not close the string.
Token Lexer::string() {
  chars_.clear();
  do {
    if (atEnd()) return unexpectedEof("STRING");
    collect();
    if (previous == '\\' && (lookaheadChar == '\\' || lookaheadChar == '"')) {
      collect();
    } else {
      collectUntil('"', '\\');
    }
  } while (lookaheadChar != '"');
  collect();
  return collectedToken(Type::Str);
}

// Reads a letter or "_", then letters, digits and "_". The bytes 0x80 to 0xFE are letters.
Token Lexer::id() {
  if (atEnd()) return unexpectedEof("ID");
  chars_.clear();
  collect();
  collectRun(char_class::NAME);
  Token word;
  word.type = texts_.intern(textOf(chars_), word.text);
  word.line = line;
  word.column = column;
  return word;
}

// Reads "-" or a digit, then number characters. The parser converts the text later.
Token Lexer::number() {
  if (atEnd()) return unexpectedEof("NUMBER");
  chars_.clear();
  collect();
  collectRun(char_class::NUMBER);
  const bool isReal = std::any_of(chars_.begin(), chars_.end(), isRealMarker);
  return collectedToken(isReal ? Type::Real : Type::Int);
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

// Reads "[" ... "]" and keeps it as written. Brackets do not nest: the first "]" after the first
// character closes the list.
Token Lexer::brackets() {
  chars_.clear();
  do {
    if (atEnd()) return unexpectedEof("BRACKETS");
    if (lookaheadChar != ']' && !mayBeInBrackets(lookaheadChar)) return invalidListToken("BRACKET");
    collect();
  } while (lookaheadChar != ']');
  collect();
  return collectedToken(Type::Brackets);
}

// Reads a whole list as one token. The token contains the elements, separated by single blanks.
// Nested lists of the same kind are flattened: their brackets are left out and do not separate
// numbers, so "(1(2))" becomes "(12)". White space, commas and brackets of another kind are
// separators.
Token Lexer::bracketedList(const ListKind& kind) {
  chars_.clear();
  std::uint64_t depth = 0;
  while (true) {
    if (atEnd()) return unexpectedEof(kind.plural);
    if (!mayBeInList(lookaheadChar)) return invalidListToken(kind.singular);
    if (chars_.size != 0 && lookaheadChar == kind.open) {
      consume();
      ++depth;
    } else if (depth > 0 && lookaheadChar == kind.close) {
      consume();
      --depth;
    } else {
      list(chars_, kind.open, kind.close);
    }
    collectListRun();
    if (depth == 0 && lookaheadChar == kind.close) {
      collect();
      return collectedList(kind.type);
    }
  }
}

void Lexer::list(ds::Vector<char>& chars, char open, char close) {
  const char c = lookaheadChar;
  const bool isWhite = is(c, char_class::WHITE);
  const bool separates = c != open && c != close && (isWhite || isBracket(c) || c == ',');
  if (!separates) return chars.push_back(consume());
  consume();
  if (isWhite) skipWhite();
  separate(chars, open, close);
}

// Appends one blank between two elements. Appends nothing after a blank, after the opening bracket
// of the list, and before a closing bracket of the list's kind, even if it closes a nested list: so
// "((1,)2)" becomes "(12)", too.
void Lexer::separate(ds::Vector<char>& chars, char open, char close) {
  const char last = chars.size == 0 ? '\0' : chars[chars.size - 1];
  if (String::isSpace(last) || !String::isPrintable(last)) return;
  if (last == open || lookaheadChar == close) return;
  chars.push_back(' ');
}

// Collects runs of numbers in large steps. Each step stops after a number character. The result is
// the same as reading one character at a time.
void Lexer::collectListRun() {
  while (isNumberChar() && windowEnd - windowBegin >= 2) {
    const std::ptrdiff_t count = std::min(windowEnd - 1 - windowBegin, MAX_STEP_BYTES);
    chars_.reserveAdditional(static_cast<std::size_t>(count) + NORMALIZER_SLACK);
    char* const to = chars_.data + chars_.size;
    const NormalizedList run = normalizeList(windowBegin, windowBegin + count, to);
    chars_.size += static_cast<std::uint64_t>(run.to - to);
    consumeBytes(static_cast<std::size_t>(run.from - windowBegin));
  }
}

}  // namespace zn::korvo_sdk::impl
