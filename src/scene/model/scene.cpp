#include <vsa/model/scene.h>

#include <algorithm>

#include <vsa/model/input.h>
#include "diagnostics/emitter.h"

namespace zn::korvo_sdk {

Node* Scene::nodeAt(std::uint64_t slot) const noexcept {
  if (slot >= nodes_.size()) return nullptr;
  Node& node = nodes_[slot];
  return node.isRemoved() ? nullptr : &node;
}

void Scene::setDepthLimit(std::uint64_t limit) noexcept {
  depthLimit_ = std::min(limit, GREATEST_DEPTH_LIMIT);
}

std::uint64_t Scene::slotOf(const String& name) const {
  return names_.find(name.hash(), [&](std::uint64_t i) { return nodes_[i].name_ == name; });
}

Node* Scene::findNode(const String& name) {
  if (lastFound_ != nullptr && lastFound_->name_ == name) return lastFound_;
  const std::uint64_t slot = slotOf(name);
  if (slot == ds::HashIndex::NONE) {
    lastMissing_ = name;
    return nullptr;
  }
  lastFound_ = &nodes_[slot];
  return lastFound_;
}

// The empty name is as good as any, and no miss to remember.
Node* Scene::createNode(const String& type, const String& name, const String& /*reserved*/) {
  const bool isKnownToBeMissing = !name.isEmpty() && lastMissing_ == name;
  return isKnownToBeMissing || findNode(name) == nullptr ? add(type, name) : nullptr;
}

Node* Scene::defineNode(const String& name) {
  Node* const existing = findNode(name);
  return existing != nullptr ? existing : add(name, name);
}

Node* Scene::add(const String& type, const String& name) {
  names_.reserveOne();
  Node& made = nodes_.make(type, name);
  names_.insert(name.hash(), nodes_.size() - 1);
  lastFound_ = &made;
  lastMissing_ = String();
  return &made;
}

void Scene::removeNode(const String& name) {
  const std::uint64_t slot = slotOf(name);
  if (slot == ds::HashIndex::NONE) return;
  nodes_[slot].rare().isRemoved = true;
  names_.erase(name.hash(), slot);
  lastFound_ = nullptr;
}

void Scene::refuseDepth(const String& newPath) const {
  Emitter().fatal(DiagnosticId::NestedTooDeeply, newPath, depthLimit_);
}

void Scene::checkEmptyElements(const Input& array) const {
  if (emptyElements_ < emptyElementLimit_) return;
  Emitter().fatal(DiagnosticId::TooManyEmptyElements, array.path(), emptyElementLimit_);
}

}  // namespace zn::korvo_sdk
