// A scene that holds nothing and ignores everything. Internal.
#pragma once

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Finds and creates no node. Tests derive scenes from it that differ in one function.
class NoScene : public interfaces::IScene {
 public:
  interfaces::INode* findNode(const String&) override { return nullptr; }
  interfaces::INode* createNode(const String&, const String&, const String&) override {
    return nullptr;
  }
  interfaces::INode* defineNode(const String&) override { return nullptr; }
  void removeNode(const String&) override {}
  void setFileVersion(unsigned long long) override {}
  void setFileTime(const String&) override {}
  void pushFileComment(const String&) override {}
  void clearComments() override {}
};

/// The one for a parse without a scene.
interfaces::IScene& noScene();

}  // namespace zn::korvo_sdk::impl
