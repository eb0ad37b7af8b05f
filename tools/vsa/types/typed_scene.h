// TypedScene: a scene that knows which of its nodes have a type.
#pragma once

#include <unordered_set>

#include <vsa/view.h>
#include "tools/vsa/common/scene/forwarding_scene.h"

namespace vsa_tools {

/// A scene for one reading. It records which nodes "define" creates. Such a node has no type, but
/// its name is stored as its type. The scene alone does not show this, because a declaration such
/// as `lamp lamp;` creates an equal node.
class TypedScene final : public ForwardingScene {
 public:
  vsa::SceneView view() const { return scene(); }
  /// Whether the node has a type. A node that "define" created has none, and neither has a node of
  /// type "with", because `with name:` creates such nodes.
  bool hasType(const vsa::NodeView& node) const {
    return !defined_.contains(node.plain()) && node.type() != "with";
  }

  zn::korvo_sdk::Node* defineNode(const zn::String& name) override {
    zn::korvo_sdk::Node* const node = ForwardingScene::defineNode(name);
    defined_.insert(node);
    return node;
  }

 private:
  std::unordered_set<const zn::korvo_sdk::Node*> defined_;
};

}  // namespace vsa_tools
