// The names of the nodes that a text makes and removes.
#pragma once

#include <set>
#include <string>

#include <vsa/host_scene.h>

namespace vsa_tools {

/// A scene that keeps the names of its nodes.
class NodeNames final : public vsa::HostScene {
 public:
  /// Of the nodes that are or were in the scene, and of those that the text removes though it has
  /// not made them: an earlier text of a merged one may have.
  const std::set<std::string>& used() const { return used_; }
  /// Whether a node of that name is in the scene.
  bool has(const std::string& name) const { return node(name) != nullptr; }

  std::unique_ptr<vsa::HostNode> makeNode(std::string_view type, std::string_view name) override {
    used_.emplace(name);
    return HostScene::makeNode(type, name);
  }
  void removeNode(const zn::String& name) override {
    used_.emplace(name.view());
    HostScene::removeNode(name);
  }

 private:
  std::set<std::string> used_;
};

}  // namespace vsa_tools
