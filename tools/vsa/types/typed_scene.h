// TypedScene: a scene that knows which of its nodes have a type.
#pragma once

#include <unordered_set>

#include <vsa/model/scene.h>
#include <vsa/view.h>

namespace vsa_tools {

/// A scene for one reading. It records which nodes "define" creates. Such a node has no type: its
/// name is stored as its type, so a declaration such as `lamp lamp;` gives an equal node.
class TypedScene final : public zn::korvo_sdk::interfaces::IScene {
 public:
  vsa::SceneView view() const { return scene_; }
  /// Whether the node has a type. A node that "define" or "with" created has none.
  bool hasType(const vsa::NodeView& node) const {
    return !defined_.contains(node.plain()) && node.type() != "with";
  }

  // The functions of IScene.

  zn::korvo_sdk::Node* findNode(const zn::String& name) override { return scene_.findNode(name); }
  zn::korvo_sdk::Node* createNode(const zn::String& type, const zn::String& name,
                                  const zn::String& reserved) override {
    return scene_.createNode(type, name, reserved);
  }
  /// The reader calls this function only if no node has the name.
  zn::korvo_sdk::Node* defineNode(const zn::String& name) override {
    zn::korvo_sdk::Node* const node = scene_.defineNode(name);
    defined_.insert(node);
    return node;
  }
  void removeNode(const zn::String& name) override { scene_.removeNode(name); }
  void setFileVersion(unsigned long long version) override { scene_.setFileVersion(version); }
  void setFileTime(const zn::String& time) override { scene_.setFileTime(time); }
  void pushFileComment(const zn::String&) override {}
  void clearComments() override {}

 private:
  zn::korvo_sdk::Scene scene_;
  std::unordered_set<const zn::korvo_sdk::Node*> defined_;
};

}  // namespace vsa_tools
