#include "vsa/apply/no_scene.h"

namespace zn::korvo_sdk::impl {

namespace {

class NoScene final : public interfaces::IScene {
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

}  // namespace

interfaces::IScene& noScene() {
  static NoScene none;
  return none;
}

}  // namespace zn::korvo_sdk::impl
