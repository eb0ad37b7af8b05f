// The names of the nodes that a text makes.
#pragma once

#include <set>
#include <string>

#include <vsa/host_scene.h>

namespace vsa_tools {

/// A scene that keeps the names of its nodes.
class NodeNames final : public vsa::HostScene {
 public:
  /// Of the nodes that were made, removed ones included.
  const std::set<std::string>& made() const { return made_; }

  std::unique_ptr<vsa::HostNode> makeNode(std::string_view type, std::string_view name) override {
    made_.emplace(name);
    return HostScene::makeNode(type, name);
  }

 private:
  std::set<std::string> made_;
};

}  // namespace vsa_tools
