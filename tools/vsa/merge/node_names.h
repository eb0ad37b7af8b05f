// NodeNames: collects the names of the nodes that a text creates and removes.
#pragma once

#include <set>
#include <string>

#include "tools/vsa/common/scene/forwarding_scene.h"

namespace vsa_tools {

/// A scene that stores the names of its nodes, even after they are removed.
class NodeNames final : public ForwardingScene {
 public:
  /// The names of all nodes that the text creates or removes. The text may remove a node without
  /// creating it, because an earlier text of the merge may create it.
  const std::set<std::string>& used() const { return used_; }
  /// Returns whether a node of that name is in the scene.
  bool has(const std::string& name) const { return scene().nodeNamed(name) != nullptr; }

  zn::korvo_sdk::Node* createNode(const zn::String& type, const zn::String& name,
                                  const zn::String& reserved) override {
    used_.emplace(name.view());
    return ForwardingScene::createNode(type, name, reserved);
  }
  zn::korvo_sdk::Node* defineNode(const zn::String& name) override {
    used_.emplace(name.view());
    return ForwardingScene::defineNode(name);
  }
  void removeNode(const zn::String& name) override {
    used_.emplace(name.view());
    ForwardingScene::removeNode(name);
  }

 private:
  std::set<std::string> used_;
};

}  // namespace vsa_tools
