// Parses the rest of an assignment after its left-hand side: "=" or "|=", the right-hand side (a
// value, a reference or a connection), and the ";". Does not access the scene.
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

using Type = Token::Type;

// "|" "=" (path | "null") ";"
// The operator is two tokens. Example: `mesh1.tint |= mat1.outColor;`
bool VsaParser::connect(AssignInfo& info) {
  if (!nextIs(Type::Pipe)) return false;
  advance();
  expect(Type::Equals, "=");
  if (match(info.valueToken, Type::Null)) {
    info.sourcePath.push_back(info.valueToken);
  } else if (!path(info.sourcePath)) {
    tokenError("(null|path)", peek(0));
  }
  expect(Type::Semicolon, ";");
  info.isConnection = true;
  return true;
}

// "=" (scalar | buffer | reference) ";"
// A reference is tried last, because a type keyword is the name of a node if no list follows it.
bool VsaParser::value(AssignInfo& info) {
  if (!nextIs(Type::Equals)) return false;
  advance();
  if (scalar(info)) {
    info.isScalar = true;
  } else if (buffer(info)) {
    info.isBuffer = true;
  } else if (!reference(info)) {
    tokenError("(scalar|buffer|reference)", peek(0));
  }
  expect(Type::Semicolon, ";");
  return true;
}

// name | "null"
// Example: `mesh1.material = mat1;`
bool VsaParser::reference(AssignInfo& info) {
  if (!nextIs(Type::Id) && !nextIs(Type::Null)) return false;
  info.isReference = true;
  match(info.referenceToken, peek(0).type);
  info.valueToken = info.referenceToken;
  return true;
}

}  // namespace zn::korvo_sdk::impl
