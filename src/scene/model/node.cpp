#include "scene/model/node.h"

#include "scene/model/input.h"
#include "scene/model/output.h"
#include "scene/model/scene.h"
#include "scene/node_type_table.h"

namespace zn::korvo_sdk {

Node::Node(Scene* scene, String type, String name)
    : scene_(scene),
      type_(std::move(type)),
      name_(std::move(name)),
      declaration_(declaredType(type_.view())) {
}

Node::~Node() = default;

Input* Node::inputAt(std::uint64_t index) const noexcept {
  return index < inputs_.count() ? inputs_.at(index) : nullptr;
}

bool Node::hasInput(const String& name, AttrType type) {
  const Input* const found = input(name);
  return found != nullptr && (type == AttrType::Null || found->type() == type);
}

Input* Node::input(const String& name) {
  if (lastFound_ != nullptr && lastFound_->name() == name) return lastFound_;
  Input* const found = inputs_.find(name);
  if (found == nullptr) return bringIntoBeing(name);
  lastFound_ = found;
  return found;
}

Input* Node::createInput(const String& name, AttrType type) {
  return make(name, type, AttrType::Null);
}

Input* Node::createArray(const String& name, AttrType elementType) {
  return make(name, AttrType::Array, elementType);
}

Input* Node::make(const String& name, AttrType type, AttrType elementType) {
  if (Input* const existing = input(name); existing != nullptr) {
    return existing->type() == type ? existing : nullptr;
  }
  return declaration_ == nullptr ? add(name, type, elementType) : nullptr;
}

// A declared input is made when its name is first used.
Input* Node::bringIntoBeing(const String& name) {
  const DeclaredInput* const made =
      declaration_ == nullptr ? nullptr : declaration_->input(name.view());
  if (made == nullptr) return nullptr;
  const InputDeclaration& declared = made->declaration;
  Input* const input = add(name, declared.type, declared.elementType);
  if (declared.type == AttrType::Buffer && declared.bufferType != DataType::Null) {
    AttrData structure;
    structure.type = AttrType::Buffer;
    structure.elementType = static_cast<std::int32_t>(declared.bufferType);
    input->set(structure);
  }
  return input;
}

Input* Node::add(const String& name, AttrType type, AttrType elementType) {
  if (scene_->depthLimit() == 0) scene_->refuseDepth(name_ + "." + name);
  Input* const made = &scene_->inputs().make(this, name, type);
  if (type == AttrType::Array) made->setElementType(elementType);
  inputs_.append(made);
  lastFound_ = made;
  return made;
}

Output* Node::output(const String& name) {
  if (declaration_ != nullptr && !declaration_->hasOutput(name.view())) return nullptr;
  if (outputs_ == nullptr) outputs_ = std::make_unique<NamedList<Output>>();
  Output* const existing = outputs_->find(name);
  if (existing != nullptr) return existing;
  Output* const made = &scene_->outputs().make(this, name);
  outputs_->append(made);
  return made;
}

}  // namespace zn::korvo_sdk
