// StatementReader: groups tokens to statements and determines the kinds of the statements.
#include <span>
#include <string_view>

#include <vsa/syntax.h>
#include "foundation/text/letter_case.h"

namespace vsa {

namespace {

using Tokens = std::span<const SyntaxToken>;

// A part of a statement ends when it has MAX_TOKENS tokens. If the text is from a source, a part
// also ends when the kept texts (the first piece of each token) have at least MAX_KEPT_BYTES bytes.
// Valid statements of real texts are far below both limits: only a path can have many tokens, and
// the library's scene allows 256 levels of inputs by default.
constexpr std::size_t MAX_TOKENS = 65536;
constexpr std::size_t MAX_KEPT_BYTES = std::size_t{16} << 20;

bool hasKind(Tokens tokens, std::size_t index, SyntaxKind kind) {
  return index < tokens.size() && tokens[index].kind == kind;
}

bool isChar(Tokens tokens, std::size_t index, char c) {
  return index < tokens.size() && tokens[index].is(c);
}

// Recognises a path: node "." input, or "." input, and then "[index]" and ".member". Returns the
// index of the token after the path. Returns `from` if there is no path.
std::size_t endOfPath(Tokens tokens, std::size_t from) {
  std::size_t at = from;
  if (hasKind(tokens, at, SyntaxKind::Word)) ++at;
  if (!isChar(tokens, at, '.') || !hasKind(tokens, at + 1, SyntaxKind::Word)) return from;
  at += 2;
  while (true) {
    if (hasKind(tokens, at, SyntaxKind::Brackets)) {
      ++at;
    } else if (isChar(tokens, at, '.') && hasKind(tokens, at + 1, SyntaxKind::Word)) {
      at += 2;
    } else {
      return at;
    }
  }
}

// Returns the index of the token after the value, or `from` if there is no value.
std::size_t endOfValue(Tokens tokens, std::size_t from) {
  if (hasKind(tokens, from, SyntaxKind::Word)) {
    if (hasKind(tokens, from + 1, SyntaxKind::Parens)) return from + 2;
    const bool isBuffer = hasKind(tokens, from + 1, SyntaxKind::Brackets) &&
                          hasKind(tokens, from + 2, SyntaxKind::Braces);
    return from + (isBuffer ? 3 : 1);
  }
  for (const SyntaxKind kind :
       {SyntaxKind::True, SyntaxKind::False, SyntaxKind::Null, SyntaxKind::Integer,
        SyntaxKind::Real, SyntaxKind::String, SyntaxKind::Braces, SyntaxKind::Brackets}) {
    if (hasKind(tokens, from, kind)) return from + 1;
  }
  return from;
}

StatementKind directive(Tokens tokens) {
  if (tokens[2].is(':')) return StatementKind::Block;
  if (!tokens[2].is(';')) return StatementKind::Malformed;
  if (zn::isWord(tokens[0].text, "remove")) return StatementKind::Remove;
  return zn::isWord(tokens[0].text, "define") ? StatementKind::Define : StatementKind::Declaration;
}

StatementKind assignment(Tokens tokens, std::size_t& valueIndex) {
  std::size_t at = endOfPath(tokens, 0);
  if (at == 0) return StatementKind::Malformed;
  const bool isConnection = isChar(tokens, at, '|');
  if (isConnection) ++at;
  if (!isChar(tokens, at, '=')) return StatementKind::Malformed;
  const std::size_t value = at + 1;
  if (!isConnection) {
    at = endOfValue(tokens, value);
  } else {
    at = hasKind(tokens, value, SyntaxKind::Null) ? value + 1 : endOfPath(tokens, value);
  }
  if (at == value || !isChar(tokens, at, ';')) return StatementKind::Malformed;
  valueIndex = value;
  return isConnection ? StatementKind::Connection : StatementKind::Assignment;
}

StatementKind classify(Tokens tokens, std::size_t& valueIndex) {
  if (hasKind(tokens, 0, SyntaxKind::Comment)) return StatementKind::Comment;
  const bool isDirective = tokens.size() == 3 && hasKind(tokens, 0, SyntaxKind::Word) &&
                           hasKind(tokens, 1, SyntaxKind::Word);
  return isDirective ? directive(tokens) : assignment(tokens, valueIndex);
}

}  // namespace

// Sets the texts of the tokens to views of `kept_`. Call it when `kept_` is complete, because
// `kept_` may move when it grows.
void StatementReader::keepTexts(SyntaxStatement& out) {
  const char* at = kept_.data();
  for (SyntaxToken& token : out.tokens) {
    token.text = {at, token.text.size()};
    at += token.text.size();
  }
}

// Reads the tokens of a statement. Returns whether it has reached the end of the statement or of
// the text.
bool StatementReader::readTokens(std::vector<SyntaxToken>& tokens) {
  if (reader_.keepsText()) return reader_.appendStatement(tokens, MAX_TOKENS);
  while (true) {
    const SyntaxToken token = reader_.next();
    if (token.kind == SyntaxKind::EndOfText) return true;
    if (token.isFirst) {
      tokens.push_back(token);
      kept_ += token.text;
    } else {
      SyntaxToken& whole = tokens.back();
      whole.kind = token.kind;
      whole.range.end = token.range.end;
    }
    if (!token.isLast) continue;
    const bool isComment = tokens.front().kind == SyntaxKind::Comment;
    if (isComment || token.is(';') || token.is(':')) return true;
    if (tokens.size() >= MAX_TOKENS || kept_.size() >= MAX_KEPT_BYTES) return false;
  }
}

bool StatementReader::next(SyntaxStatement& out) {
  out.tokens.clear();
  out.valueIndex = 0;
  kept_.clear();
  const bool continues = isInside_;
  isInside_ = !readTokens(out.tokens);
  if (out.tokens.empty()) return false;
  if (!reader_.keepsText()) keepTexts(out);
  out.range = {out.tokens.front().range.begin, out.tokens.back().range.end};
  const bool isPart = continues || isInside_;
  out.kind = isPart ? StatementKind::Malformed : classify(out.tokens, out.valueIndex);
  return true;
}

}  // namespace vsa
