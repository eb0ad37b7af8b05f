// Parses assignments: parses the path and the right-hand side, and finds the node and the input.
// Then assigns the value or stores a pending link.
#include "vsa/apply/input_path.h"
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/values/value_assigner.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

std::uint64_t bytesOf(const ds::Vector<Token>& path) {
  std::uint64_t bytes = 0;
  for (const Token& token : path) bytes += token.text.len();
  return bytes;
}

}  // namespace

// assignment = path ("=" value | "|=" source) ";"
//
// The right-hand side is parsed before the node is looked up. The message about a missing node
// therefore has the position of the ";".
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
    setValue(info.valueToken.text.view(), *input, target.array(), target.arrayCountBefore());
  }
  return true;
}

// Assigns the value of the statement. See ValueAssigner::assign.
void VsaParser::setValue(std::string_view literal, IInput& input, IInput* array,
                         std::uint64_t countBefore) {
  ValueAssigner assigner(emitter(), typedElements_, session);
  unassigned_.end(assigner.assign(assignment_.data, literal, input, array, countBefore));
}

// Counts a link of `input` before it is stored. Returns the position for messages about the link.
// Without a session, counts nothing and returns zeros.
TextPlace VsaParser::beginLink(IInput& input, std::uint64_t sourceBytes) const {
  if (session == nullptr) return {};
  session->chargeLink(input, sourceBytes);
  return session->statement();
}

// Finds or creates the input of the path. Throws DiagnosticError if there is none. If the path
// begins with ".", the message starts with the node's name. A host's scene may rename the node when
// it finds or creates an input, so the name is requested before that. The library's scene renames
// no node. For its nodes, `inputNotFound` requests the name only for the message, which saves 9 %
// of the time of the benchmark indexed.
interfaces::IInput* VsaParser::resolve(PathResolver& target, std::span<const Token> path) {
  const bool isOfHost = path[0].type == Token::Type::Dot && library_ == nullptr;
  const String nodeName = isOfHost ? target.node().name() : String();
  if (session != nullptr) session->beginTarget(target.node());
  IInput* const input = target.resolve();
  if (input != nullptr) return input;
  if (!isOfHost) inputNotFound(target.node(), path);
  emitter().fatal(DiagnosticId::InputNotFound, nodeName + collapsedPath(path));
}

void VsaParser::inputNotFound(INode& node, std::span<const Token> path) const {
  const bool isWithPath = path[0].type == Token::Type::Dot;
  const String nodeName = isWithPath ? node.name() : String();
  emitter().fatal(DiagnosticId::InputNotFound, nodeName + collapsedPath(path));
}

// Returns the node of a path. A path that begins with "." refers to the "with" node. Throws
// DiagnosticError if there is no such node.
interfaces::INode* VsaParser::targetNode(std::span<const Token> path) {
  const Token& first = path[0];
  if (first.type == Token::Type::Dot) {
    if (withNode != nullptr) return withNode;
    emitter().fatal(DiagnosticId::WithNodeNotSet, collapsedPath(path));
  }
  INode* const node = sceneOrNone().findNode(first.text);
  if (node != nullptr) return node;
  emitter().fatal(DiagnosticId::NodeNotFound, collapsedPath(path));
}

}  // namespace zn::korvo_sdk::impl
