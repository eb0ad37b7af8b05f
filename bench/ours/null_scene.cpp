// A scene that stores no values. Its only node has the name of the last declaration, and findNode
// finds no other name. The node never finds an input, so the reader creates an input for each
// assignment and link. A read into a new scene makes almost the same calls, because most texts
// assign each input once.
#include "bench/ours/null_scene.h"

#include <cstdlib>
#include <stdexcept>

#include <vsa/foundation/string.h>
#include <vsa/parse.h>
#include <vsa/scene/scene_interface.h>

namespace bench {
namespace {

using zn::String;
using zn::korvo_sdk::AttrData;
using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
namespace interfaces = zn::korvo_sdk::interfaces;

class NullInput final : public interfaces::IInput {
 public:
  AttrType createdType = AttrType::Null;
  uint64_t values = 0;

  AttrType type() const override { return createdType; }
  String typeName() const override { return {}; }
  String path() const override { return {}; }
  bool holdsBuffer(bool /*flag*/) const override { return false; }
  const interfaces::IEnumeration* enumValues() const override { return nullptr; }
  AttrType elementType() const override { return AttrType::Null; }
  DataType bufferType() const override { return DataType::Null; }
  void appendElement() override {}
  bool isArray(bool /*flag*/) const override { return false; }
  bool refusesValues() const override { return false; }
  IInput* createInput(const String& /*name*/, AttrType /*type*/) override { return nullptr; }
  IInput* createArray(const String& /*name*/, AttrType /*elementType*/) override { return nullptr; }
  bool hasInput(const String& /*name*/, AttrType /*type*/) override { return false; }
  uint64_t count() const override { return 0; }
  IInput* element(uint64_t /*index*/) override { return nullptr; }
  IInput* input(const String& /*name*/) override { return nullptr; }
  void set(const AttrData& /*structure*/) override {}
  void assign(const AttrData& value) override {
    ++values;
    if (value.type == AttrType::String) std::free(value.payload.string);
    if (value.type == AttrType::Buffer) std::free(value.payload.buffer.memory);
  }
  void connect(interfaces::IOutput* /*output*/) override {}
  void disconnect() override {}
  void setNode(interfaces::INode* /*node*/) override {}
};

class NullNode final : public interfaces::INode {
 public:
  NullInput onlyInput;

  String name() const override { return {}; }
  String type() const override { return {}; }
  bool hasInput(const String& /*name*/, AttrType /*type*/) override { return false; }
  interfaces::IInput* input(const String& /*name*/) override { return nullptr; }
  interfaces::IInput* createInput(const String& /*name*/, AttrType type) override {
    onlyInput.createdType = type;
    return &onlyInput;
  }
  interfaces::IInput* createArray(const String& name, AttrType /*elementType*/) override {
    return createInput(name, AttrType::Array);
  }
  interfaces::IOutput* output(const String& /*name*/) override { return nullptr; }
};

class NullScene final : public interfaces::IScene {
 public:
  NullNode node;

  interfaces::INode* findNode(const String& name) override {
    return name == last_ ? &node : nullptr;
  }
  interfaces::INode* createNode(const String& /*type*/, const String& name,
                                const String& /*reserved*/) override {
    last_ = name;
    return &node;
  }
  interfaces::INode* defineNode(const String& name) override { return createNode(name, name, {}); }
  void removeNode(const String& /*name*/) override {}
  void setFileVersion(unsigned long long /*version*/) override {}
  void setFileTime(const String& /*time*/) override {}
  void pushFileComment(const String& /*comment*/) override {}
  void clearComments() override {}

 private:
  String last_;
};

uint64_t valuesRead(const String& text) {
  NullScene scene;
  if (!zn::korvo_sdk::impl::parseString(&scene, text)) {
    throw std::runtime_error("the reader did not read the text");
  }
  return scene.node.onlyInput.values;
}

}  // namespace

Candidate nullSceneReader(const Text& vsa) {
  const String text(vsa.text.data(), vsa.text.size());
  const size_t links = vsa.expected.references + vsa.expected.connections;
  requireCount("a scene without operations", "values", valuesRead(text),
               vsa.expected.inputs - links);
  return {"VSA reader, into a scene without operations", [text] {
            const Stopwatch watch;
            valuesRead(text);
            return watch.seconds();
          }};
}

}  // namespace bench
