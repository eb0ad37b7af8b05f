// InputImpl: construction, paths, declarations, elements, members and links. input_value.cpp sets
// values, and input_removal.cpp removes them.
#include "scene/model/input_impl.h"

#include <memory>
#include <string>

#include "diagnostics/emitter.h"
#include "diagnostics/reading_sinks.h"
#include "scene/model/node_impl.h"
#include "scene/model/output_impl.h"
#include "scene/model/scene_storage.h"
#include "scene/node_type_table.h"

namespace zn::korvo_sdk {

InputImpl::InputImpl(NodeImpl* node, const String& name, AttrType type)
    : name_(name),
      nameTag_(static_cast<std::uint32_t>(name_.hash())),
      level_(1),
      type_(static_cast<std::uint8_t>(type)),
      isNodeInput_(true) {
  parent_.node = node;
}

InputImpl::InputImpl(InputImpl* parent, const String& name, std::uint32_t index, AttrType type)
    : name_(name),
      level_(static_cast<std::uint16_t>(parent->level_ + 1)),
      type_(static_cast<std::uint8_t>(type)),
      isNodeInput_(false),
      isElement_(parent->typeOf() == AttrType::Array),
      isUnused_(isElement_) {
  parent_.input = parent;
  if (isElement_) {
    index_ = index;
  } else {
    nameTag_ = static_cast<std::uint32_t>(name_.hash());
  }
}

InputImpl::~InputImpl() {
  freeValue();
}

SceneStorage& InputImpl::storage() const noexcept {
  return *Slabs<InputImpl, SceneStorage>::ownerOf(this);
}

// --- owner and path ---

NodeImpl& InputImpl::owner() const noexcept {
  const InputImpl* input = this;
  while (!input->isNodeInput_) input = input->parent_.input;
  return *input->parent_.node;
}

// Concatenates the name of the node and the steps from it to this input: `.name`, or `[index]` for
// an element. Copies the name only once, because it may have any length.
String InputImpl::path() const {
  std::string steps;
  ds::Vector<const InputImpl*> chain;
  for (const InputImpl* input = this; input != nullptr; input = input->parentInput()) {
    chain.push_back(input);
  }
  for (std::uint64_t i = chain.size; i > 0; --i) {
    const InputImpl& input = *chain[i - 1];
    if (input.isElement_) {
      (steps += '[').append(std::to_string(input.index_)) += ']';
    } else {
      (steps += '.') += input.name_.view();
    }
  }
  return owner().name() + String::copyOf(steps);
}

// Returns the declaration of a node's input. Returns null for an element, a member, or an input of
// an open node type.
const DeclaredInput* InputImpl::declared() const noexcept {
  if (!isNodeInput_ || parent_.node->declaration() == nullptr) return nullptr;
  return parent_.node->declaration()->input(name_.view());
}

const interfaces::IEnumeration* InputImpl::enumValues() const {
  const DeclaredInput* const declaration = declared();
  return declaration == nullptr ? nullptr : &declaration->enumeration;
}

bool InputImpl::refusesValues() const {
  const DeclaredInput* const declaration = declared();
  return declaration != nullptr && declaration->declaration.refusesValues;
}

// --- elements ---

bool InputImpl::isArray(bool /*flag*/) const {
  return typeOf() == AttrType::Array;
}

AttrType InputImpl::elementType() const {
  if (typeOf() != AttrType::Array || value_.elements == nullptr) return AttrType::Null;
  return value_.elements->type;
}

InputImpl::ElementList& InputImpl::elements() {
  if (value_.elements == nullptr) value_.elements = new ElementList;
  return *value_.elements;
}

std::uint64_t InputImpl::count() const {
  if (typeOf() != AttrType::Array || value_.elements == nullptr) return 0;
  return value_.elements->inputs.size;
}

InputImpl* InputImpl::element(std::uint64_t index) {
  return index < count() ? value_.elements->inputs[index] : nullptr;
}

void InputImpl::appendElement() {
  if (typeOf() != AttrType::Array) return;
  SceneStorage& scene = storage();
  const std::uint64_t index = count();
  if (level_ >= scene.limits.depth) {
    scene.limits.throwTooDeep(path() + "[" + String(static_cast<unsigned long long>(index)) + "]");
  }
  SceneLimits::checkElementCount(*this, index);
  scene.limits.checkEmptyElements(*this);
  ElementList& list = elements();
  // Adds the pointer before the element is created. Otherwise, after an exception of push_back, the
  // element would take memory in the scene without being in the list.
  list.inputs.push_back(nullptr);
  try {
    list.inputs[index] =
        &scene.inputs.make(this, String(), static_cast<std::uint32_t>(index), list.type);
  } catch (...) {
    --list.inputs.size;
    throw;
  }
  ++scene.limits.emptyElementCount;
  markUsed();
}

// Marks an element as used. A used element does not count as empty.
void InputImpl::markUsed() noexcept {
  if (!isUnused_) return;
  isUnused_ = false;
  --storage().limits.emptyElementCount;
}

// --- members ---

bool InputImpl::hasInput(const String& name, AttrType type) {
  const InputImpl* const found = input(name);
  return found != nullptr && found->hasType(type);
}

InputImpl* InputImpl::input(const String& name) {
  if (typeOf() != AttrType::Object || value_.members == nullptr) return nullptr;
  return value_.members->find(name);
}

InputImpl* InputImpl::createInput(const String& name, AttrType type) {
  return createMember(name, type, AttrType::Null);
}

InputImpl* InputImpl::createArray(const String& name, AttrType elementType) {
  return createMember(name, AttrType::Array, elementType);
}

InputImpl* InputImpl::createMember(const String& name, AttrType type, AttrType elementType) {
  if (typeOf() != AttrType::Object && typeOf() != AttrType::Null) return nullptr;
  if (name.startsWith("[", false)) return nullptr;
  if (InputImpl* const existing = input(name); existing != nullptr) {
    return existing->typeOf() == type ? existing : nullptr;
  }
  SceneStorage& scene = storage();
  if (level_ >= scene.limits.depth) scene.limits.throwTooDeep(path() + "." + name);
  std::unique_ptr<NamedList<InputImpl>> newList;
  if (typeOf() == AttrType::Null || value_.members == nullptr) {
    newList = std::make_unique<NamedList<InputImpl>>();
  }
  NamedList<InputImpl>& members = newList != nullptr ? *newList : *value_.members;
  InputImpl* const member = &scene.inputs.make(this, name, 0U, type);
  if (type == AttrType::Array) member->setElementType(elementType);
  members.append(member, scene.pool);
  become(AttrType::Object);
  if (newList != nullptr) value_.members = newList.release();
  markUsed();
  return member;
}

// --- links ---

void InputImpl::connect(interfaces::IOutput* output) {
  markUsed();
  connection_ = static_cast<OutputImpl*>(output);
}

void InputImpl::disconnect() {
  markUsed();
  connection_ = nullptr;
}

void InputImpl::setNode(interfaces::INode* node) {
  markUsed();
  become(AttrType::Node);
  if (typeOf() == AttrType::Node) {
    value_.node = static_cast<NodeImpl*>(node);
  } else {
    warnOfNode(node);
  }
}

void InputImpl::warnOfNode(interfaces::INode* node) const {
  const String name = node == nullptr ? String("null") : node->name();
  if (!isWanted(DiagnosticId::CannotAssignNode)) return;
  Emitter().log(DiagnosticId::CannotAssignNode, name, path(), typeName());
}

}  // namespace zn::korvo_sdk
