// Parses the directives remove, define and with, and declarations. Each function checks three
// tokens before it consumes any. Keywords match in any letter case. Names are case-sensitive.
#include "foundation/text/letter_case.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

using Type = Token::Type;

namespace {

// Returns the last node of the type, or null.
interfaces::INode* lastOfType(const ds::Vector<interfaces::INode*>& nodes, const String& type) {
  interfaces::INode* last = nullptr;
  for (interfaces::INode* const node : nodes) {
    if (node->type() == type) last = node;
  }
  return last;
}

}  // namespace

// Consumes the next three tokens if they are `keyword`, a name and a token of type `end`. Stores
// the name in `name`. Otherwise returns false.
bool VsaParser::directive(std::string_view keyword, Type end, Token& name) {
  const bool isDirective = peek(0).type == Type::Id && peek(1).type == Type::Id &&
                           peek(2).type == end && isWord(peek(0).text.view(), keyword);
  if (!isDirective) return false;
  advance();
  match(name, Type::Id);
  advance();
  return true;
}

// "remove" name ";"
bool VsaParser::remove(RemoveInfo& info) {
  return directive("remove", Type::Semicolon, info.name);
}

// Removes a node. Does not change the "with" node, even if it is the removed node.
bool VsaParser::parseRemove() {
  RemoveInfo info;
  if (!remove(info)) return false;
  sceneOrNone().removeNode(info.name.text);
  return true;
}

// "define" name ";"
bool VsaParser::define(DefineInfo& info) {
  return directive("define", Type::Semicolon, info.name);
}

bool VsaParser::parseDefine() {
  DefineInfo info;
  if (!define(info)) return false;
  const String& name = info.name.text;
  INode* const node = findOrCreate(name, 0, [&] { return sceneOrNone().defineNode(name); });
  if (node != nullptr) definedNodes.push_back(node);
  return true;
}

// Returns the node of the name. If there is none, calls `create` and returns its result.
// `typeBytes` is the size of the type's name.
template <class Create>
interfaces::INode* VsaParser::findOrCreate(const String& name, std::uint64_t typeBytes,
                                           const Create& create) {
  INode* const found = sceneOrNone().findNode(name);
  if (found != nullptr) return found;
  if (session != nullptr) session->chargeNode(typeBytes + name.len());
  INode* const created = create();
  if (session != nullptr && created != nullptr) ++session->counts.nodes;
  return created;
}

// type name (";" | ":")
bool VsaParser::declare(DeclareInfo& info) {
  const Type end = peek(2).type;
  if (peek(0).type != Type::Id || peek(1).type != Type::Id) return false;
  if (end != Type::Semicolon && end != Type::Colon) return false;
  match(info.type, Type::Id);
  match(info.name, Type::Id);
  advance();
  info.isWith = end == Type::Colon;
  return true;
}

// Creates a node. Exception: if a node with this name exists, creates nothing, even if that node
// has another type. If the declaration ends in ":", the node becomes the "with" node in both cases.
bool VsaParser::parseDeclare() {
  DeclareInfo info;
  if (!declare(info)) return false;
  declareNode(info.type.text, info.name.text, info.isWith);
  return true;
}

void VsaParser::declareNode(const String& type, const String& name, bool isWith) {
  INode* const node = findOrCreate(name, type.len(),
                                   [&] { return sceneOrNone().createNode(type, name, String()); });
  if (isWith) withNode = node;
}

// "with" name ":"
bool VsaParser::with(WithInfo& info) {
  return directive("with", Type::Colon, info.name);
}

// Sets the "with" node. When the statement loop calls this function, it never finds a directive: a
// declaration has the same syntax, and parseDeclare is called first.
bool VsaParser::parseWith() {
  WithInfo info;
  if (!with(info)) return false;
  withNode = sceneOrNone().findNode(info.name.text);
  if (withNode == nullptr) withNode = lastOfType(definedNodes, info.name.text);
  return true;
}

}  // namespace zn::korvo_sdk::impl
