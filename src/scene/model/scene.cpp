#include <vsa/model/scene.h>

#include <algorithm>

#include "scene/library_scene.h"
#include "scene/model/input_impl.h"
#include "scene/model/scene_storage.h"

namespace zn::korvo_sdk {

Scene::Scene() : storage_(std::make_unique<SceneStorage>(this)) {
  static constexpr LibraryFunctions FUNCTIONS{
      [](interfaces::IScene& scene) noexcept -> LibraryScene* {
        auto* const own = dynamic_cast<Scene*>(&scene);
        return own == nullptr ? nullptr : &own->storage_->nodes;
      },
      [](interfaces::IInput& array) noexcept -> std::uint64_t {
        auto* const own = dynamic_cast<InputImpl*>(&array);
        return own == nullptr ? 0 : own->typedPrefix();
      },
  };
  setLibraryFunctions(FUNCTIONS);
}

Scene::~Scene() = default;

// --- nodes ---

std::uint64_t Scene::nodeSlots() const noexcept {
  return storage_->nodes.slots();
}

Node* Scene::nodeAt(std::uint64_t slot) const noexcept {
  if (slot >= nodeSlots()) return nullptr;
  NodeImpl& node = storage_->nodes.at(slot);
  return node.isRemoved() ? nullptr : &node;
}

std::uint64_t Scene::nodeCount() const noexcept {
  return storage_->nodes.count();
}

Node* Scene::nodeNamed(std::string_view name) const noexcept {
  return storage_->nodes.lookUp(name);
}

Node* Scene::findNode(const String& name) {
  return storage_->nodes.find(name);
}

Node* Scene::createNode(const String& type, const String& name, const String& /*reserved*/) {
  return storage_->nodes.create(type, name);
}

Node* Scene::defineNode(const String& name) {
  Node* const existing = findNode(name);
  return existing != nullptr ? existing : storage_->nodes.create(name, name);
}

void Scene::removeNode(const String& name) {
  storage_->nodes.remove(name);
}

// --- the header of the file ---

unsigned long long Scene::fileVersion() const noexcept {
  return storage_->header.version;
}

String Scene::fileTime() const {
  return storage_->header.time;
}

std::uint64_t Scene::fileCommentCount() const noexcept {
  return storage_->header.comments.size;
}

String Scene::fileComment(std::uint64_t index) const {
  return storage_->header.comments[index];
}

void Scene::setFileVersion(unsigned long long version) {
  storage_->header.version = version;
}

void Scene::setFileTime(const String& time) {
  storage_->header.time = time;
}

void Scene::pushFileComment(const String& comment) {
  storage_->header.comments.push_back(comment);
}

void Scene::clearComments() {
  storage_->header.comments.reserve(0);
}

// --- limits ---

std::uint64_t Scene::emptyElementLimit() const noexcept {
  return storage_->limits.emptyElements;
}

void Scene::setEmptyElementLimit(std::uint64_t limit) noexcept {
  storage_->limits.emptyElements = limit;
}

std::uint64_t Scene::depthLimit() const noexcept {
  return storage_->limits.depth;
}

void Scene::setDepthLimit(std::uint64_t limit) noexcept {
  storage_->limits.depth = std::min(limit, MAX_DEPTH_LIMIT);
}

}  // namespace zn::korvo_sdk
