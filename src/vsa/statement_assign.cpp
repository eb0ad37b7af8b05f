// Assignments: parses the path and the right-hand side, finds the node and the input, then assigns
// the value or stores a pending link.
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

}  // namespace

// assignment = path ("=" value | "|=" source) ";"
//
// The right-hand side is parsed before the node is looked up. The value is already consumed when
// the error for a missing node is thrown.
bool VsaParser::parseAssign() {
  AssignInfo& info = assignment_;
  info.clear();
  if (!path(info.targetPath)) return false;
  const bool isRead = nextIs(Token::Type::Pipe) ? connect(info) : value(info);
  if (!isRead) return false;
  PathResolver target(*targetNode(info), info, emitter());
  IInput* const input = resolve(target, info);
  if (info.isConnection) {
    connections.setLink(input, PendingLink(info));
  } else if (info.isReference) {
    references.setLink(input, PendingLink(info));
  } else {
    ValueAssigner(emitter(), typedElements_).assign(info.data, info.valueToken.text.view(), target);
  }
  return true;
}

interfaces::IInput* VsaParser::resolve(PathResolver& target, const AssignInfo& info) {
  IInput* const input = target.resolve();
  if (input != nullptr) return input;
  emitter().fatal(DiagnosticId::InputNotFound, pathText(info, &target.node()));
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
