// Assignments: target path, right-hand side, node, input; then the value is applied or the link is
// filed for later.
#include "vsa/apply/input_path.h"
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/value_assigner.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

// The whole path for messages. One that begins with "." gets the name of its node in front.
String pathText(const AssignInfo& info, const interfaces::INode* node) {
  const String text = collapsedPath(info.targetPath);
  return node == nullptr || text[0] != '.' ? text : node->name() + text;
}

}  // namespace

// assignment = path ("=" value | "|=" source) ";"
//
// The right-hand side is read before the node is looked up: a statement about a missing node has
// consumed its value when the error is raised.
bool VsaParser::parseAssign() {
  AssignInfo& info = assignment_;
  info.clear();
  if (!path(info.targetPath)) return false;
  const bool isRead = nextIs(Token::Type::Pipe) ? connect(info) : value(info);
  if (!isRead) return false;
  const Emitter messages = emitter();
  INode* const node = targetNode(info);
  PathResolver target(*node, info, messages);
  IInput* const input = target.resolve();
  if (input == nullptr) messages.fatal(DiagnosticId::InputNotFound, pathText(info, node));
  if (info.isConnection) {
    connections.file(input, PendingLink(info));
  } else if (info.isReference) {
    references.file(input, PendingLink(info));
  } else {
    ValueAssigner(messages, typedElements_).assign(info, target);
  }
  return true;
}

// A path that begins with "." is about the "with" node.
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
