// NodeNames: collects the names of the nodes that a text creates and removes.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>

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
  /// Returns whether a `define` statement made the node of that name, and no other statement made
  /// or removed one.
  bool isDefined(const std::string& name) const { return defined_.contains(name); }

  /// Returns the names that broken links refer to.
  std::set<std::string> missing() const {
    std::set<std::string> names = missing_;
    if (!sought_.empty()) names.insert(sought_);
    return names;
  }

  /// The reader looks up each name before it creates the node. A look-up that fails, and that is
  /// not followed by the creation of the node, is that of a link or of a `with` node.
  zn::korvo_sdk::Node* findNode(const zn::String& name) override {
    zn::korvo_sdk::Node* const node = ForwardingScene::findNode(name);
    if (!sought_.empty()) missing_.insert(sought_);
    sought_ = node == nullptr ? name.view() : std::string_view();
    return node;
  }
  zn::korvo_sdk::Node* createNode(const zn::String& type, const zn::String& name,
                                  const zn::String& reserved) override {
    use(name);
    return ForwardingScene::createNode(type, name, reserved);
  }
  zn::korvo_sdk::Node* defineNode(const zn::String& name) override {
    sought_.clear();
    if (used_.emplace(name.view()).second) defined_.emplace(name.view());
    return ForwardingScene::defineNode(name);
  }
  void removeNode(const zn::String& name) override {
    use(name);
    ForwardingScene::removeNode(name);
  }

 private:
  void use(const zn::String& name) {
    sought_.clear();
    std::string text(name.view());
    defined_.erase(text);
    used_.insert(std::move(text));
  }

  std::set<std::string> used_;
  std::set<std::string> defined_;
  std::set<std::string> missing_;
  std::string sought_;  // the name of the last look-up if no node had it, otherwise empty
};

}  // namespace vsa_tools
