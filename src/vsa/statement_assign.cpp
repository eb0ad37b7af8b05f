// The road of one assignment: target path, right-hand side, node, input; then the value is applied
// or the link filed for later.
#include <utility>

#include "vsa/apply/path_resolver.h"
#include "vsa/apply/value_convert.h"
#include "vsa/diagnostics/messages.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

bool isUntyped(interfaces::IInput& element, AttrType type) {
  if (type == AttrType::Buffer) return element.bufferType() == DataType::Null;
  return element.elementType() == AttrType::Null;
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
  INode* const node = nodeOf(info);
  InputWalk walk(*this, *node, info);
  IInput* const input = walk.run();
  if (input == nullptr) parseError(INPUT_NOT_FOUND, pathText(info, node).buf());
  if (info.isConnection) {
    file(connections, walk, info);
  } else if (info.isReference) {
    file(references, walk, info);
  } else {
    apply(info, input, walk.array());
  }
  return true;
}

// A path that begins with "." is about the "with" node.
interfaces::INode* VsaParser::nodeOf(const AssignInfo& info) {
  const Token& first = info.targetPath[0];
  if (first.type == Token::Type::Dot) {
    if (withNode == nullptr) parseError(WITH_NODE_NOT_SET, pathText(info, nullptr).buf());
    return withNode;
  }
  INode* const node = target().findNode(first.text);
  if (node == nullptr) parseError(NODE_NOT_FOUND, pathText(info, nullptr).buf());
  return node;
}

// The whole path for messages, the "with" node's name included.
String VsaParser::pathText(const AssignInfo& info, INode* node) const {
  String text = collapse(info.targetPath);
  if (node == nullptr || text[0] != '.') return text;
  return node->name() + text;
}

// Files a link until the last statement has been read; a later one for the same input replaces it.
// The input is held once. One that has just been made is in no table yet, unless its node was
// removed and a host has made both again out of the same objects.
void VsaParser::file(PendingTable& table, const InputWalk& walk, const AssignInfo& info) {
  IInput* const input = walk.target();
  PendingLink link(info);
  const bool isNew = walk.isNew() && !hasRemoved_;
  PendingTable::Node* const filed = isNew ? nullptr : table.findNode(input);
  if (filed != nullptr) {
    filed->value = std::move(link);
    return;
  }
  input->retain();
  table.add(input, std::move(link));
}

// Applies a plain value. `array` is the array that the input is an element of, or null.
void VsaParser::apply(AssignInfo& info, IInput* input, IInput* array) {
  if (!accepts(info, input)) return;
  if (array != nullptr) typeHoles(info, array);
  // The characters are the scene's from `assign` on: what is still asked of them is asked before.
  const bool isBadEnumValue = info.data.type == AttrType::String && !isEnumValue(info, input);
  const String text = isBadEnumValue ? String(info.data.payload.string) : String();
  input->assign(info.data);
  if (isBadEnumValue) badEnumValueWarning(text, input);
}

// Whether the value may be applied, after its conversion to the input's type. Says so if not.
bool VsaParser::accepts(AssignInfo& info, IInput* input) {
  if (input->isArray(false) || input->refusesValues()) {
    wrongTypeWarning(info.valueString(), input);
    return false;
  }
  if (input->holdsBuffer(false)) return acceptsBuffer(info, input);
  const AttrType from = info.data.type;
  const AttrType to = input->type();
  if (from == to) return true;
  const Conversion conversion = conversionBetween(from, to);
  if (conversion == Conversion::Refused) {
    wrongTypeWarning(attrTypeName(from), input);
    return false;
  }
  if (conversion == Conversion::Narrowing) narrowTypeWarning(attrTypeName(from), input);
  convert(info.data, to);
  return true;
}

bool VsaParser::acceptsBuffer(const AssignInfo& info, IInput* input) {
  if (info.data.type != AttrType::Buffer) {
    wrongTypeWarning(attrTypeName(info.data.type), input);
    return false;
  }
  const DataType type = info.data.payload.buffer.type;
  const DataType present = input->bufferType();
  if (present == DataType::Null || present == type) return true;
  wrongTypeWarning(dataTypeName(type), input);
  return false;
}

// The holes that an index beyond the end has left in an array of buffers or of arrays take on the
// type of the element that is about to be assigned.
void VsaParser::typeHoles(const AssignInfo& info, IInput* array) {
  const AttrType type = array->elementType();
  if (type != AttrType::Buffer && type != AttrType::Array) return;
  AttrData empty;
  empty.type = type;
  empty.elementType = info.data.elementType;
  const auto isTyped = [type](IInput& element) { return !isUntyped(element, type); };
  const std::uint64_t count = array->count();
  for (std::uint64_t i = typedElements_.firstUnknown(array, isTyped); i < count; ++i) {
    IInput* const element = array->element(i);
    if (element != nullptr && isUntyped(*element, type)) element->set(empty);
  }
  typedElements_.remember(array);
}

bool VsaParser::isEnumValue(const AssignInfo& info, const IInput* input) {
  const interfaces::IEnumeration* const values = input->enumValues();
  if (values == nullptr || values->isEmpty()) return true;
  return values->find(String(info.data.payload.string)) != nullptr;
}

}  // namespace zn::korvo_sdk::impl
