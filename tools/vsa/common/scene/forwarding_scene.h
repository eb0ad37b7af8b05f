// ForwardingScene: the base of scenes that record what a reading does.
#pragma once

#include <vsa/model/scene.h>

namespace vsa_tools {

/// A scene whose functions call those of a scene that it owns. Comments are not kept. A derived
/// class overrides the functions whose calls it records.
class ForwardingScene : public zn::korvo_sdk::interfaces::IScene {
 public:
  ForwardingScene() = default;
  ForwardingScene(const ForwardingScene&) = delete;
  ForwardingScene& operator=(const ForwardingScene&) = delete;

  zn::korvo_sdk::Node* findNode(const zn::String& name) override { return scene_.findNode(name); }
  zn::korvo_sdk::Node* createNode(const zn::String& type, const zn::String& name,
                                  const zn::String& reserved) override {
    return scene_.createNode(type, name, reserved);
  }
  /// The reader calls this function only if no node has the name.
  zn::korvo_sdk::Node* defineNode(const zn::String& name) override {
    return scene_.defineNode(name);
  }
  void removeNode(const zn::String& name) override { scene_.removeNode(name); }
  void setFileVersion(unsigned long long version) override { scene_.setFileVersion(version); }
  void setFileTime(const zn::String& time) override { scene_.setFileTime(time); }
  void pushFileComment(const zn::String&) override {}
  void clearComments() override {}

 protected:
  ~ForwardingScene() = default;
  /// The scene that has the nodes.
  const zn::korvo_sdk::Scene& scene() const { return scene_; }

 private:
  zn::korvo_sdk::Scene scene_;
};

}  // namespace vsa_tools
