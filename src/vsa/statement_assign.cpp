// Assignments: parses the path and the right-hand side, finds the node and the input, then assigns
// the value or stores a pending link.
#include <utility>

#include "vsa/apply/input_path.h"
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/values/value_assigner.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

// The whole path for messages. The node's name is prepended to a path that begins with ".".
String pathText(std::span<const Token> path, const interfaces::INode* node) {
  const String text = collapsedPath(path);
  return node == nullptr || text[0] != '.' ? text : node->name() + text;
}

std::uint64_t bytesOf(const ds::Vector<Token>& path) {
  std::uint64_t bytes = 0;
  for (const Token& token : path) bytes += token.text.len();
  return bytes;
}

}  // namespace

// assignment = path ("=" value | "|=" source) ";"
//
// The right-hand side is parsed before the node is looked up. The value is already consumed when
// the error for a missing node is thrown.
bool VsaParser::parseAssign() {
  AssignInfo& info = assignment_;
  info.clear();
  if (!path(info.targetPath)) return false;
  if (session != nullptr) session->beginAssignment(info, info.targetPath);
  const bool isRead = nextIs(Token::Type::Pipe) ? connect(info) : value(info);
  if (!isRead) return false;
  PathResolver target(*targetNode(info.targetPath), info.targetPath, info.data.type, emitter(),
                      session);
  IInput* const input = resolve(target, info.targetPath);
  if (info.isConnection) {
    connections.setLink(input, info, beginLink(*input, bytesOf(info.sourcePath)));
  } else if (info.isReference) {
    references.setLink(input, info, beginLink(*input, info.referenceToken.text.len()));
  } else {
    ValueAssigner(emitter(), typedElements_, session)
        .assign(info.data, info.valueToken.text.view(), target);
  }
  return true;
}

// Called before a link of `input` is stored. Returns the position for messages about the link.
TextPlace VsaParser::beginLink(IInput& input, std::uint64_t sourceBytes) const {
  if (session == nullptr) return {};
  session->chargeLink(input, sourceBytes);
  return session->statement();
}

interfaces::IInput* VsaParser::resolve(PathResolver& target, std::span<const Token> path) {
  if (session != nullptr) session->beginTarget(target.node());
  IInput* const input = target.resolve();
  if (input != nullptr) return input;
  emitter().fatal(DiagnosticId::InputNotFound, pathText(path, &target.node()));
}

// A path that begins with "." refers to the "with" node.
interfaces::INode* VsaParser::targetNode(std::span<const Token> path) {
  const Token& first = path[0];
  if (first.type == Token::Type::Dot) {
    if (withNode != nullptr) return withNode;
    emitter().fatal(DiagnosticId::WithNodeNotSet, pathText(path, nullptr));
  }
  INode* const node = sceneOrNone().findNode(first.text);
  if (node != nullptr) return node;
  emitter().fatal(DiagnosticId::NodeNotFound, pathText(path, nullptr));
}

}  // namespace zn::korvo_sdk::impl
