#include <vsa/model/node.h>

#include <utility>

#include <vsa/model/input.h>
#include <vsa/model/output.h>
#include <vsa/model/scene.h>
#include "scene/node_type_table.h"

namespace zn::korvo_sdk {

Node::Node(const String& type, const String& name) : type_(type), name_(name) {
  std::shared_ptr<const DeclaredType> declaration = declaredType(type_.view());
  if (declaration != nullptr) rare().declaration = std::move(declaration);
}

Node::~Node() = default;

Scene* Node::scene() const noexcept {
  return Slabs<Node, Scene>::ownerOf(this);
}

Node::Rare& Node::rare() {
  if (rare_ == nullptr) rare_ = std::make_unique<Rare>();
  return *rare_;
}

Input* Node::inputAt(std::uint64_t index) const noexcept {
  return index < inputs_.count() ? inputs_.at(index) : nullptr;
}

bool Node::hasInput(const String& name, AttrType type) {
  const Input* const found = input(name);
  return found != nullptr && (type == AttrType::Null || found->type() == type);
}

Input* Node::input(const String& name) {
  Scene::LastLookUp& last = scene()->lastLookUp_;
  if (last.found != nullptr && last.found->isOf(this) && last.found->name() == name) {
    return last.found;
  }
  Input* found = inputs_.find(name);
  if (found == nullptr && declaration() != nullptr) found = bringIntoBeing(name);
  if (found != nullptr) {
    last.found = found;
  } else {
    last.missingIn = this;
    last.missing = name;
  }
  return found;
}

Input* Node::createInput(const String& name, AttrType type) {
  return make(name, type, AttrType::Null);
}

Input* Node::createArray(const String& name, AttrType elementType) {
  return make(name, AttrType::Array, elementType);
}

Input* Node::make(const String& name, AttrType type, AttrType elementType) {
  const Scene::LastLookUp& last = scene()->lastLookUp_;
  const bool isKnownToBeMissing = last.missingIn == this && last.missing == name;
  Input* const existing = isKnownToBeMissing ? nullptr : input(name);
  if (existing != nullptr) return existing->type() == type ? existing : nullptr;
  return declaration() == nullptr ? add(name, type, static_cast<std::int32_t>(elementType))
                                  : nullptr;
}

// A declared input is made when its name is first used.
Input* Node::bringIntoBeing(const String& name) {
  const DeclaredInput* const made = declaration()->input(name.view());
  if (made == nullptr) return nullptr;
  const InputDeclaration& declared = made->declaration;
  const auto elementType = declared.type == AttrType::Buffer
                               ? static_cast<std::int32_t>(declared.bufferType)
                               : static_cast<std::int32_t>(declared.elementType);
  return add(name, declared.type, elementType);
}

// The input is in the list once it has all its structure.
Input* Node::add(const String& name, AttrType type, std::int32_t elementType) {
  Scene& owner = *scene();
  if (owner.depthLimit() == 0) owner.refuseDepth(name_ + "." + name);
  Input* const made = &owner.inputs().make(this, name, type);
  if (elementType != 0) {
    AttrData structure;
    structure.type = type;
    structure.elementType = elementType;
    made->set(structure);
  }
  inputs_.append(made, owner.blocks());
  owner.lastLookUp_.found = made;
  owner.lastLookUp_.missingIn = nullptr;
  return made;
}

Output* Node::output(const String& name) {
  if (declaration() != nullptr && !declaration()->hasOutput(name.view())) return nullptr;
  if (output_ != nullptr && output_->name() == name) return output_;
  Output* const existing = rare_ == nullptr ? nullptr : rare_->outputs.find(name);
  if (existing != nullptr) return existing;
  if (output_ != nullptr) rare();  // room first: what is made must be in a list
  Scene& owner = *scene();
  Output* const made = &owner.outputs().make(this, name);
  if (output_ == nullptr) {
    output_ = made;
  } else {
    rare_->outputs.append(made, owner.blocks());
  }
  return made;
}

}  // namespace zn::korvo_sdk
