// vsa::Scene: owns the plain scene, and adds and removes nodes. The functions for the header are in
// scene_header.cpp.
#include <vsa/scene.h>

#include <vsa/text_rules.h>
#include "api/edit_guard.h"

namespace vsa {

Scene::Scene() noexcept = default;
Scene::Scene(Scene&& other) noexcept = default;
Scene& Scene::operator=(Scene&& other) noexcept = default;
Scene::~Scene() = default;

zn::korvo_sdk::Scene& Scene::plain() {
  if (plain_ == nullptr) plain_ = std::make_unique<zn::korvo_sdk::Scene>();
  return *plain_;
}

const zn::korvo_sdk::Scene& Scene::plain() const {
  if (plain_ != nullptr) return *plain_;
  static const zn::korvo_sdk::Scene EMPTY;
  return EMPTY;
}

Node Scene::operator[](TextParameter node) noexcept {
  return Node(plain_ != nullptr ? plain_->nodeNamed(node) : nullptr);
}

Added<Node> Scene::addNode(TextParameter type, TextParameter name) noexcept {
  return detail::guarded([&]() -> Added<Node> {
    if (!isName(type) || !isName(name)) return EditError::BadName;
    zn::korvo_sdk::Node* const made =
        plain().createNode(zn::String::copyOf(type), zn::String::copyOf(name), zn::String());
    if (made == nullptr) return EditError::NameTaken;
    return Node(made);
  });
}

Status Scene::removeNode(NodeView node) noexcept {
  return detail::guarded([&]() -> Status {
    if (const Status status = detail::checkNode(node.plain()); !status) return status;
    if (node.plain()->scene() != plain_.get()) return EditError::OtherScene;
    plain_->removeNode(zn::String::copyOf(node.name()));
    return {};
  });
}

}  // namespace vsa
