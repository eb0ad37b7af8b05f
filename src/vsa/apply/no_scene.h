// NoScene: a scene without nodes. The parser uses it if the host passes no scene. Internal.
#pragma once

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Finds no node and creates none.
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

/// Returns a scene without nodes, which is shared by all parsers.
inline interfaces::IScene& noScene() {
  static NoScene none;
  return none;
}

}  // namespace zn::korvo_sdk::impl
