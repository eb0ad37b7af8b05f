// NodeNames: collects the names of the nodes that a text creates and removes.
#pragma once

#include <set>
#include <string>

#include <vsa/model/scene.h>

namespace vsa_tools {

/// A scene that stores the names of its nodes, even after they are removed.
class NodeNames final : public zn::korvo_sdk::interfaces::IScene {
 public:
  /// The names of all nodes that the text creates or removes. The text may remove a node without
  /// creating it, because an earlier text of the merge may create it.
  const std::set<std::string>& used() const { return used_; }
  /// Returns whether a node of that name is in the scene.
  bool has(const std::string& name) const { return scene_.nodeNamed(name) != nullptr; }

  // The functions of IScene.

  zn::korvo_sdk::Node* findNode(const zn::String& name) override { return scene_.findNode(name); }
  zn::korvo_sdk::Node* createNode(const zn::String& type, const zn::String& name,
                                  const zn::String& reserved) override {
    used_.emplace(name.view());
    return scene_.createNode(type, name, reserved);
  }
  zn::korvo_sdk::Node* defineNode(const zn::String& name) override {
    used_.emplace(name.view());
    return scene_.defineNode(name);
  }
  void removeNode(const zn::String& name) override {
    used_.emplace(name.view());
    scene_.removeNode(name);
  }
  void setFileVersion(unsigned long long version) override { scene_.setFileVersion(version); }
  void setFileTime(const zn::String& time) override { scene_.setFileTime(time); }
  void pushFileComment(const zn::String&) override {}
  void clearComments() override {}

 private:
  zn::korvo_sdk::Scene scene_;
  std::set<std::string> used_;
};

}  // namespace vsa_tools
