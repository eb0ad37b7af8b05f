// Parses input paths: the left-hand side of an assignment, and the source of a connection.
//   path = (name "." name | "." name) { "[" ... "]" | "." name }
#include "vsa/apply/input_path.h"

#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

using Type = Token::Type;

// Parses a path, such as `sphere1.radius`, `.radius` or `mesh1.sets[0].name`.
bool VsaParser::path(ds::Vector<Token>& tokensOfPath) {
  const bool isQualified =
      peek(0).type == Type::Id && peek(1).type == Type::Dot && peek(2).type == Type::Id;
  const bool isOfWithNode = peek(0).type == Type::Dot && peek(1).type == Type::Id;
  if (!isQualified && !isOfWithNode) return false;
  for (int remaining = isQualified ? 3 : 2; remaining > 0; --remaining) appendNext(tokensOfPath);
  while (arrayattr(tokensOfPath) || scalarattr(tokensOfPath)) {
  }
  return true;
}

// Parses an index: "[" ... "]"
bool VsaParser::arrayattr(ds::Vector<Token>& tokensOfPath) {
  if (!nextIs(Type::Brackets)) return false;
  appendNext(tokensOfPath);
  return true;
}

// Parses a member: "." name
bool VsaParser::scalarattr(ds::Vector<Token>& tokensOfPath) {
  if (!nextIs(Type::Dot) || peek(1).type != Type::Id) return false;
  appendNext(tokensOfPath);
  appendNext(tokensOfPath);
  return true;
}

// Consumes the next token and appends it to the path.
void VsaParser::appendNext(ds::Vector<Token>& tokensOfPath) {
  advance();
  if (session != nullptr) session->requireMemory((tokensOfPath.size + 1) * sizeof(Token));
  tokensOfPath.push_back(current);
}

String VsaParser::collapse(const ds::Vector<Token>& tokensOfPath) {
  return collapsedPath(tokensOfPath);
}

}  // namespace zn::korvo_sdk::impl
