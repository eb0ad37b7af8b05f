// The ring of three tokens, the statement loop, and the one place that catches.
#include "vsa/parser.h"

#include <stdexcept>
#include <utility>

#include <vsa/foundation/log.h>
#include "vsa/apply/no_scene.h"
#include "vsa/diagnostics/messages.h"
#include "vsa/lex/lexer_fast_path.h"
#include "vsa/lex/lexer_source.h"

namespace zn::korvo_sdk::impl {

bool VsaParser::parse(IScene* into, String text) {
  StringLexer source(text);
  return parse(into, &source);
}

bool VsaParser::parse(IScene* into, File file) {
  FileLexer source(file);
  return parse(into, &source);
}

// The first three tokens are read before anything is caught: an invalid character among them leaves
// the entry point as an exception.
bool VsaParser::parse(IScene* into, Lexer* from) {
  scene = into;
  lexer = from;
  prime();
  try {
    statements();
    resolveConnections();
    resolveReferences();
    reportSource();
    return true;
  } catch (const std::runtime_error& error) {
    reportSource();
    logError("%s", error.what());
    return false;
  }
}

// Fills the ring. Default tokens make room for the first ones, and are consumed on the way.
void VsaParser::prime() {
  for (std::int32_t i = 0; i < lookahead; ++i) {
    tokens.push_back(Token());
    advance();
  }
}

void VsaParser::statements() {
  while (static_cast<std::int32_t>(peek(0).type) >
         static_cast<std::int32_t>(Token::Type::Invalid)) {
    if (!statement()) parseError(UNRECOGNIZED_TOKEN, peek(0).text.buf());
  }
}

// The order is part of the format: "with node:" has the shape of a declaration and is read as one.
bool VsaParser::statement() {
  if (nextIs(Token::Type::Comment)) return parseComment();
  // Every directive begins with two names, and most statements do not.
  const bool isDirective = peek(0).type == Token::Type::Id && peek(1).type == Token::Type::Id;
  if (isDirective && (parseRemove() || parseDefine() || parseDeclare() || parseWith())) return true;
  return parseAssign();
}

void VsaParser::reportSource() const {
  if (report == nullptr) return;
  report->endedAtMark = lexer->endsAtMark();
  report->line = lexer->line;
  report->column = lexer->column;
  report->cutOff = cutOff_;
}

// A reader without a scene finds and creates nothing.
interfaces::IScene& VsaParser::target() {
  return scene != nullptr ? *scene : noScene();
}

Token VsaParser::consume() {
  advance();
  return current;
}

// The lexer runs a whole ring ahead, so a bad character is reported when it is read and not when
// its statement comes.
void VsaParser::advance() {
  Token& slot = tokens.data[head];
  lexer->nextToken(lastLexed);
  if (static_cast<int>(lastLexed.type) <= static_cast<int>(Token::Type::Invalid)) atLast(slot);
  current = std::move(slot);
  refill(slot);
  head = head + 1 < lookahead ? head + 1 : 0;
}

// Copies the token that has just been read. Its line and column were written one after the other:
// to read both in one piece, as a plain copy does, would have to wait for the memory.
void VsaParser::refill(Token& slot) const {
  slot.type = lastLexed.type;
  slot.line = lastLexed.line;
  slot.text = lastLexed.text;
  slot.column = lastLexed.column;
}

// The lexer came to the end of the text, or to what stops it before.
void VsaParser::atLast(const Token& next) {
  if (lastLexed.type == Token::Type::Invalid) {
    current = next;
    tokenError(lastLexed);
  }
  if (!(lastLexed.text == "EOF")) cutOff_ = lastLexed.text;
}

void VsaParser::take(Token& out) {
  advance();
  out = current;
}

bool VsaParser::match(Token& out, Token::Type type) {
  if (!nextIs(type)) return false;
  take(out);
  return true;
}

}  // namespace zn::korvo_sdk::impl
