// The ring of three tokens, the statement loop, and the only exception handler of the parser.
#include "vsa/parser.h"

#include <stdexcept>
#include <utility>

#include "diagnostics/reading_sinks.h"
#include "vsa/apply/links/link_resolver.h"
#include "vsa/apply/no_scene.h"
#include "vsa/lex/lexer_fast_path.h"
#include "vsa/lex/lexer_source.h"

namespace zn::korvo_sdk::impl {

using Type = Token::Type;

bool VsaParser::parse(IScene* into, String text) {
  StringLexer source(text);
  return parse(into, &source);
}

bool VsaParser::parse(IScene* into, File file) {
  FileLexer source(file);
  return parse(into, &source);
}

// A host's scene or callback may parse another text during a reading. The diagnostics of that text
// go to the sinks of the host.
bool VsaParser::parse(IScene* into, Lexer* from) {
  if (session != nullptr) return parseText(into, from);
  const ScopedHostSinks sinks;
  return parseText(into, from);
}

// The first three tokens are lexed outside the try block: the exception for an invalid character
// among them propagates to the caller.
bool VsaParser::parseText(IScene* into, Lexer* from) {
  scene = into;
  library_ = into == nullptr ? nullptr : libraryScene(*into);
  lexer = from;
  if (session != nullptr) session->beginText(assignment_);
  prime();
  try {
    while (!nextIs(Type::Eof) && !nextIs(Type::Invalid)) {
      if (session != nullptr) session->beginStatement(current.line, current.column);
      if (!parseStatement()) emitter().fatal(DiagnosticId::UnrecognizedToken, peek(0).text);
      parseSimpleStatements();
    }
    if (session != nullptr) session->beginResolution();
    resolveConnections();
    resolveReferences();
    return true;
  } catch (const std::runtime_error& error) {
    emitFatal(error);
    return false;
  }
}

// Fills the ring. Each iteration appends a default token and consumes it, which lexes a token into
// its slot.
void VsaParser::prime() {
  for (std::int32_t i = 0; i < lookahead; ++i) {
    tokens.push_back(Token());
    advance();
  }
}

// The order is part of the format: "with node:" also matches the declaration syntax and is parsed
// as a declaration.
bool VsaParser::parseStatement() {
  if (nextIs(Type::Comment)) return parseComment();
  // Every directive begins with two names. Most statements do not, and skip these calls.
  const bool isDirective = nextIs(Type::Id) && peek(1).type == Type::Id;
  if (isDirective && (parseRemove() || parseDefine() || parseDeclare() || parseWith())) return true;
  return parseAssign();
}

void VsaParser::resolveConnections() {
  LinkResolver(sceneOrNone(), session).resolveConnections(connections);
}

void VsaParser::resolveReferences() {
  LinkResolver(sceneOrNone(), session).resolveReferences(references);
}

// The parser's scene; if it has none, a scene without nodes.
interfaces::IScene& VsaParser::sceneOrNone() const {
  return scene != nullptr ? *scene : noScene();
}

Token VsaParser::consume() {
  advance();
  return current;
}

// The lexer is up to three tokens ahead of the parser. An invalid character is reported when it is
// lexed, before the statement that contains it. When lexing throws, the slot keeps the consumed
// token.
void VsaParser::advance() {
  Token& slot = tokens.data[head];
  current = std::move(slot);
  try {
    lexer->nextToken(lastLexed);
    if (lastLexed.type == Type::Invalid) throw DiagnosticError(lexer->problem());
  } catch (...) {
    slot = current;
    throw;
  }
  // Copies member by member: line and column were written by two stores, and one load of both would
  // stall until both stores complete. Every member is assigned.
  // NOLINTNEXTLINE(bugprone-use-after-move)
  slot.type = lastLexed.type;
  slot.line = lastLexed.line;
  slot.text = lastLexed.text;
  slot.column = lastLexed.column;
  slot.endIndex = lastLexed.endIndex;
  head = head + 1 < lookahead ? head + 1 : 0;
}

bool VsaParser::match(Token& out, Type type) {
  if (!nextIs(type)) return false;
  advanceInto(out);
  return true;
}

}  // namespace zn::korvo_sdk::impl
