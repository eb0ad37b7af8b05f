#include <vsa/model/node.h>

#include <utility>

#include <vsa/model/scene.h>
#include <vsa/scene/name_update.h>
#include "scene/model/node_impl.h"
#include "scene/model/scene_storage.h"

namespace zn::korvo_sdk {

Scene* Node::scene() const noexcept {
  return impl().storage().scene;
}

bool Node::isRemoved() const noexcept {
  return impl().isRemoved();
}

std::uint64_t Node::slot() const noexcept {
  return impl().position();
}

std::string_view Node::nameView() const noexcept {
  return impl().nameView();
}

std::string_view Node::typeView() const noexcept {
  return impl().typeView();
}

bool Node::isDeclared() const noexcept {
  return impl().declaration() != nullptr;
}

std::uint64_t Node::inputCount() const noexcept {
  return impl().inputs().count();
}

Input* Node::inputAt(std::uint64_t index) const noexcept {
  return index < inputCount() ? impl().inputs().at(index) : nullptr;
}

Input* Node::inputNamed(std::string_view name) const noexcept {
  return impl().inputs().find(name);
}

void Node::removeInput(Input* input) noexcept {
  if (input == nullptr || input->isRemoved()) return;
  NodeImpl& node = static_cast<NodeImpl&>(*this);
  InputImpl& removed = static_cast<InputImpl&>(*input);
  if (removed.isInputOf(node)) node.remove(removed);
}

NodeImpl::NodeImpl(const String& type, const String& name, std::uint64_t position)
    : type_(type), name_(name), firstOutput_(position) {
  if (!anyNodeTypes()) return;
  std::shared_ptr<const DeclaredType> declaration = declaredType(type_.view());
  if (declaration != nullptr) coldMembers().declaration = std::move(declaration);
}

SceneStorage& NodeImpl::storage() const noexcept {
  return *Slabs<NodeImpl, SceneStorage>::ownerOf(this);
}

NodeImpl::ColdMembers& NodeImpl::coldMembers() {
  if (cold_ == nullptr) cold_ = std::make_unique<ColdMembers>();
  return *cold_;
}

bool NodeImpl::hasInput(const String& name, AttrType type) {
  const InputImpl* const found = find(name);
  return found != nullptr && found->hasType(type);
}

InputImpl* NodeImpl::createInput(const String& name, AttrType type) {
  return create(name, type, AttrType::Null);
}

InputImpl* NodeImpl::createArray(const String& name, AttrType elementType) {
  return create(name, AttrType::Array, elementType);
}

InputImpl* NodeImpl::create(const String& name, AttrType type, AttrType elementType) {
  InputImpl* const existing = find(name);
  if (existing != nullptr) return existing->type() == type ? existing : nullptr;
  if (declaration() != nullptr) return nullptr;
  return add(name, type, static_cast<std::int32_t>(elementType));
}

// Creates an input that the node's type declares. Returns null if the type does not declare the
// name.
InputImpl* NodeImpl::instantiate(const String& name) {
  const DeclaredInput* const declared = declaration()->input(name.view());
  if (declared == nullptr) return nullptr;
  const InputDeclaration& input = declared->declaration;
  const auto elementType = input.type == AttrType::Buffer
                               ? static_cast<std::int32_t>(input.bufferType)
                               : static_cast<std::int32_t>(input.elementType);
  return add(name, input.type, elementType);
}

// Creates an input and appends it to the list. The input is appended last, so that the list
// contains only complete inputs.
InputImpl* NodeImpl::add(const String& name, AttrType type, std::int32_t elementType) {
  SceneStorage& scene = storage();
  if (scene.limits.depth == 0) scene.limits.throwTooDeep(this->name() + "." + name);
  InputImpl* const made = &scene.inputs.make(this, name, type);
  if (elementType != 0) made->set({.type = type, .elementType = elementType});
  inputs_.append(made, scene.pool);
  return made;
}

void NodeImpl::remove(InputImpl& input) noexcept {
  inputs_.remove(inputs_.positionOf(&input));
  input.remove();
}

OutputImpl* NodeImpl::output(const String& name) {
  if (declaration() != nullptr && !declaration()->hasOutput(name.view())) return nullptr;
  const std::uint32_t nameNumber = storage().outputNames.numberOf(name);
  if (firstOutput_.takeName(nameNumber)) return &firstOutput_;
  return laterOutput(name, nameNumber);
}

OutputImpl* NodeImpl::laterOutput(const String& name, std::uint32_t nameNumber) {
  NamedList<OutputImpl>& outputs = coldMembers().outputs;
  if (OutputImpl* const existing = outputs.find(name); existing != nullptr) return existing;
  SceneStorage& scene = storage();
  OutputImpl* const made = &scene.outputs.make(firstOutput_.nodePosition());
  made->takeName(nameNumber);
  outputs.append(made, scene.pool);
  return made;
}

}  // namespace zn::korvo_sdk
