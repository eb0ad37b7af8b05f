// Assignments: parses the path and the right-hand side, finds the node and the input, then assigns
// the value or stores a pending link.
#include <cstdint>
#include <utility>

#include "vsa/apply/input_path.h"
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/value_assigner.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

// The whole path for messages. The node's name is prepended to a path that begins with ".".
String pathText(const AssignInfo& info, const interfaces::INode* node) {
  const String text = collapsedPath(info.targetPath);
  return node == nullptr || text[0] != '.' ? text : node->name() + text;
}

// The number of inputs that a path goes through: all names and indices but the node's name.
std::uint64_t inputsOn(const ds::Vector<Token>& path) {
  std::uint64_t inputs = 0;
  for (const Token& token : path) inputs += token.type != Token::Type::Dot ? 1 : 0;
  return path[0].type == Token::Type::Dot ? inputs : inputs - 1;
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
  if (session != nullptr) session->beginAssignment(info, inputsOn(info.targetPath));
  const bool isRead = nextIs(Token::Type::Pipe) ? connect(info) : value(info);
  if (!isRead) return false;
  const Emitter messages = emitter();
  INode* const node = targetNode(info);
  PathResolver target(*node, info, messages, session);
  IInput* const input = target.resolve();
  if (input == nullptr) messages.fatal(DiagnosticId::InputNotFound, pathText(info, node));
  if (info.isConnection) {
    setLink(connections, input, info);
  } else if (info.isReference) {
    setLink(references, input, info);
  } else {
    ValueAssigner(messages, typedElements_, session).assign(info, target);
  }
  return true;
}

void VsaParser::setLink(PendingTable& table, IInput* input, const AssignInfo& info) const {
  PendingLink link(info);
  if (session != nullptr) {
    session->takeLink();
    link.place = session->statement();
  }
  table.setLink(input, std::move(link));
}

// A path that begins with "." refers to the "with" node.
interfaces::INode* VsaParser::targetNode(const AssignInfo& info) {
  const Token& first = info.targetPath[0];
  if (first.type == Token::Type::Dot) {
    if (withNode != nullptr) return withNode;
    emitter().fatal(DiagnosticId::WithNodeNotSet, pathText(info, nullptr));
  }
  INode* const node = sceneOrNone().findNode(first.text);
  if (node != nullptr) return node;
  emitter().fatal(DiagnosticId::NodeNotFound, pathText(info, nullptr));
}

}  // namespace zn::korvo_sdk::impl
