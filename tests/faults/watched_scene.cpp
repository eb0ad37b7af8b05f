#include "tests/faults/watched_scene.h"

#include <algorithm>
#include <stdexcept>

#include "tests/support/case_run.h"

namespace vsa_tests {

using zn::String;
using zn::korvo_sdk::AttrData;
using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
namespace host = zn::korvo_sdk::interfaces;

void declareCaseTypes() {
  static_cast<void>(outcomeOf("", Source::String));
}

std::size_t TextPieces::read(char* to, std::size_t capacity) {
  const std::size_t count = std::min({capacity, most_, text_.len() - at_});
  std::copy_n(text_.buf() + at_, count, to);
  at_ += count;
  return count;
}

std::size_t FailingPieces::read(char* to, std::size_t capacity) {
  const bool isTheOne = good_ == 0;
  if (good_ > 0) --good_;
  if (fault_ == StopsShort) {
    if (isTheOne) most_ = 1;
  } else if (isTheOne) {
    error_ = String("the source broke");
    if (fault_ == Throws) throw std::runtime_error("the source broke");
    return 0;
  }
  return TextPieces::read(to, capacity);
}

// Each wrapper counts a call before it forwards the call. If counting throws, the call is not
// forwarded and changes nothing.

class WatchedScene::WatchedEnumeration final : public host::IEnumeration {
 public:
  WatchedEnumeration(WatchedScene& scene, const host::IEnumeration& real)
      : scene_(scene), real_(real) {}
  bool isEmpty() const override {
    scene_.call("isEmpty");
    return real_.isEmpty();
  }
  const void* find(const String& name) const override {
    scene_.call("find");
    return real_.find(name);
  }

 private:
  WatchedScene& scene_;
  const host::IEnumeration& real_;
};

class WatchedScene::WatchedOutput final : public host::IOutput {
 public:
  explicit WatchedOutput(host::IOutput& watched) : real(watched) {}

  host::IOutput& real;
};

class WatchedScene::WatchedNode final : public host::INode {
 public:
  WatchedNode(WatchedScene& scene, host::INode& watched) : real(watched), scene_(scene) {}
  String name() const override {
    scene_.call("node name");
    return real.name();
  }
  String type() const override {
    scene_.call("node type");
    return real.type();
  }
  bool hasInput(const String& name, AttrType type) override {
    scene_.call("node hasInput");
    return real.hasInput(name, type);
  }
  host::IInput* input(const String& name) override;
  host::IInput* createInput(const String& name, AttrType type) override;
  host::IInput* createArray(const String& name, AttrType elementType) override;
  host::IOutput* output(const String& name) override;

  host::INode& real;

 private:
  WatchedScene& scene_;
};

class WatchedScene::WatchedInput final : public host::IInput {
 public:
  WatchedInput(WatchedScene& scene, host::IInput& watched) : real(watched), scene_(scene) {}
  AttrType type() const override { return scene_.call("type"), real.type(); }
  String typeName() const override { return scene_.call("typeName"), real.typeName(); }
  String path() const override { return scene_.call("path"), real.path(); }
  bool holdsBuffer(bool flag) const override {
    scene_.call("holdsBuffer");
    return real.holdsBuffer(flag);
  }
  const host::IEnumeration* enumValues() const override {
    scene_.call("enumValues");
    return scene_.watched(real.enumValues());
  }
  AttrType elementType() const override { return scene_.call("elementType"), real.elementType(); }
  DataType bufferType() const override { return scene_.call("bufferType"), real.bufferType(); }
  void appendElement() override {
    scene_.call("appendElement");
    if (!scene_.refuses()) real.appendElement();
  }
  bool isArray(bool flag) const override { return scene_.call("isArray"), real.isArray(flag); }
  bool refusesValues() const override {
    scene_.call("refusesValues");
    return real.refusesValues();
  }
  host::IInput* createInput(const String& name, AttrType type) override {
    scene_.call("createInput");
    return scene_.refuses() ? nullptr : scene_.watched(real.createInput(name, type));
  }
  host::IInput* createArray(const String& name, AttrType elementType) override {
    scene_.call("createArray");
    return scene_.refuses() ? nullptr : scene_.watched(real.createArray(name, elementType));
  }
  bool hasInput(const String& name, AttrType type) override {
    scene_.call("hasInput");
    return real.hasInput(name, type);
  }
  std::uint64_t count() const override { return scene_.call("count"), real.count(); }
  host::IInput* element(std::uint64_t index) override {
    scene_.call("element");
    return scene_.refuses() ? nullptr : scene_.watched(real.element(index));
  }
  host::IInput* input(const String& name) override {
    scene_.call("input");
    return scene_.watched(real.input(name));
  }
  void set(const AttrData& structure) override {
    scene_.call("set");
    real.set(structure);
  }
  void assign(const AttrData& value) override {
    scene_.call("assign");
    real.assign(value);
  }
  void connect(host::IOutput* output) override {
    scene_.call("connect");
    real.connect(output == nullptr ? nullptr : &static_cast<WatchedOutput*>(output)->real);
  }
  void disconnect() override {
    scene_.call("disconnect");
    real.disconnect();
  }
  void setNode(host::INode* node) override {
    scene_.call("setNode");
    real.setNode(node == nullptr ? nullptr : &static_cast<WatchedNode*>(node)->real);
  }
  void retain() override {
    scene_.call("retain");
    real.retain();
  }
  void release() override {
    scene_.call("release");
    real.release();
  }

  host::IInput& real;

 private:
  WatchedScene& scene_;
};

host::IInput* WatchedScene::WatchedNode::input(const String& name) {
  scene_.call("node input");
  return scene_.watched(real.input(name));
}

host::IInput* WatchedScene::WatchedNode::createInput(const String& name, AttrType type) {
  scene_.call("node createInput");
  return scene_.refuses() ? nullptr : scene_.watched(real.createInput(name, type));
}

host::IInput* WatchedScene::WatchedNode::createArray(const String& name, AttrType elementType) {
  scene_.call("node createArray");
  return scene_.refuses() ? nullptr : scene_.watched(real.createArray(name, elementType));
}

host::IOutput* WatchedScene::WatchedNode::output(const String& name) {
  scene_.call("node output");
  return scene_.refuses() ? nullptr : scene_.watched(real.output(name));
}

WatchedScene::WatchedScene(zn::korvo_sdk::Scene& scene) : scene_(scene) {
}

WatchedScene::~WatchedScene() = default;

void WatchedScene::call(const char* name) {
  if (++calls_ != throwing_) return;
  faultyCall_ = name;
  throw std::runtime_error("host fault in " + faultyCall_);
}

bool WatchedScene::refuses() {
  return ++creations_ == refusing_ || refusesEverything_;
}

// These functions return the wrapper of an object, or null for null. It is always the same for the
// same object, because the reader identifies objects by their addresses.

WatchedScene::WatchedNode* WatchedScene::watched(host::INode* node) {
  if (node == nullptr) return nullptr;
  auto& slot = nodes_[node];
  if (slot == nullptr) slot = std::make_unique<WatchedNode>(*this, *node);
  return slot.get();
}

WatchedScene::WatchedInput* WatchedScene::watched(host::IInput* input) {
  if (input == nullptr) return nullptr;
  auto& slot = inputs_[input];
  if (slot == nullptr) slot = std::make_unique<WatchedInput>(*this, *input);
  return slot.get();
}

WatchedScene::WatchedOutput* WatchedScene::watched(host::IOutput* output) {
  if (output == nullptr) return nullptr;
  auto& slot = outputs_[output];
  if (slot == nullptr) slot = std::make_unique<WatchedOutput>(*output);
  return slot.get();
}

const WatchedScene::WatchedEnumeration* WatchedScene::watched(const host::IEnumeration* values) {
  if (values == nullptr) return nullptr;
  auto& slot = enumerations_[values];
  if (slot == nullptr) slot = std::make_unique<WatchedEnumeration>(*this, *values);
  return slot.get();
}

host::INode* WatchedScene::findNode(const String& name) {
  call("findNode");
  return watched(scene_.findNode(name));
}

host::INode* WatchedScene::createNode(const String& type, const String& name,
                                      const String& reserved) {
  call("createNode");
  return refuses() ? nullptr : watched(scene_.createNode(type, name, reserved));
}

host::INode* WatchedScene::defineNode(const String& name) {
  call("defineNode");
  return refuses() ? nullptr : watched(scene_.defineNode(name));
}

void WatchedScene::removeNode(const String& name) {
  call("removeNode");
  scene_.removeNode(name);
}

void WatchedScene::setFileVersion(unsigned long long version) {
  call("setFileVersion");
  scene_.setFileVersion(version);
}

void WatchedScene::setFileTime(const String& time) {
  call("setFileTime");
  scene_.setFileTime(time);
}

void WatchedScene::pushFileComment(const String& comment) {
  call("pushFileComment");
  scene_.pushFileComment(comment);
}

void WatchedScene::clearComments() {
  call("clearComments");
  scene_.clearComments();
}

}  // namespace vsa_tests
