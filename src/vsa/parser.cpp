// The ring of three tokens, the statement loop, and the handler of the errors that end a parse.
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

// Parses a text. Without a session, the diagnostics of this text go to the sinks of the host. This
// matters if a host's scene or callback calls this function during another reading. The sinks of
// the other reading must not receive the diagnostics of this text.
bool VsaParser::parse(IScene* into, Lexer* from) {
  if (session != nullptr) return parseText(into, from);
  const ScopedHostSinks sinks;
  return parseText(into, from);
}

// Parses the statements and resolves the links. The first three tokens are lexed outside the try
// block. An exception for an invalid character in them therefore propagates to the caller.
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

// Fills the ring. Each iteration appends a default token and consumes it. Consuming lexes a new
// token into the slot.
void VsaParser::prime() {
  for (std::int32_t i = 0; i < lookahead; ++i) {
    tokens.push_back(Token());
    advance();
  }
}

// Parses one statement. The order is part of the format: `with node:` also has the form of a
// declaration, and it is parsed as a declaration.
bool VsaParser::parseStatement() {
  if (nextIs(Type::Comment)) return parseComment();
  // Every directive and every declaration begins with two names. Other statements skip these calls,
  // which saves 9 % of the time of the benchmark indexed.
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

// Returns the parser's scene. Returns a scene without nodes if the parser has no scene.
interfaces::IScene& VsaParser::sceneOrNone() const {
  return scene != nullptr ? *scene : noScene();
}

Token VsaParser::consume() {
  advance();
  return current;
}

// Consumes a token and lexes the token three positions after it. The lexer thus reports an invalid
// character before the parser executes the statement that contains the character. If lexing throws,
// the slot keeps the consumed token.
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
  slot = lastLexed;
  head = head + 1 < lookahead ? head + 1 : 0;
}

bool VsaParser::match(Token& out, Type type) {
  if (!nextIs(type)) return false;
  advanceInto(out);
  return true;
}

}  // namespace zn::korvo_sdk::impl
