// A scene without nodes, for a parse without a scene. Internal.
#pragma once

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Finds no node and creates none. Tests derive scenes from it and override one function.
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

/// The scene that the parser uses if it has none.
interfaces::IScene& noScene();

}  // namespace zn::korvo_sdk::impl
