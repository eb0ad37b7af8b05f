// DroppedNode and DroppedInput: the node that represents all nodes that a HostScene does not store,
// and the input that represents all inputs of these nodes. Internal.
//
// One input is enough. For each statement, the reader follows the path from the node, and then uses
// only the input at the end of the path. createInput, createArray and `element` set the type of the
// input and return the input itself. The input stores no value, element or member, but only a type,
// an element type and a number of elements. Pending links of all such inputs refer to it, and it
// ignores them.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <limits>

#include <vsa/host_scene.h>

namespace vsa {

namespace detail {

class DroppedInput final : public zn::korvo_sdk::interfaces::IInput {
 public:
  DroppedInput* createdAs(ValueType type, ValueType elementType) noexcept {
    type_ = type;
    elementType_ = elementType;
    count_ = 0;
    return this;
  }

  ValueType type() const override { return type_; }
  zn::String typeName() const override { return zn::korvo_sdk::attrTypeName(type_); }
  zn::String path() const override { return "(dropped)"; }
  bool holdsBuffer(bool /*flag*/) const override { return type_ == ValueType::Buffer; }
  const zn::korvo_sdk::interfaces::IEnumeration* enumValues() const override { return nullptr; }
  ValueType elementType() const override { return elementType_; }
  ElementType bufferType() const override { return ElementType::Null; }
  /// Sets the number of elements to the largest 64-bit number, so that every smaller index in a
  /// text is valid.
  void appendElement() override { count_ = std::numeric_limits<std::uint64_t>::max(); }
  bool isArray(bool /*flag*/) const override { return type_ == ValueType::Array; }
  bool refusesValues() const override { return false; }
  DroppedInput* createInput(const zn::String& /*name*/, ValueType type) override {
    return createdAs(type, ValueType::Null);
  }
  DroppedInput* createArray(const zn::String& /*name*/, ValueType elementType) override {
    return createdAs(ValueType::Array, elementType);
  }
  bool hasInput(const zn::String& /*name*/, ValueType /*type*/) override { return false; }
  std::uint64_t count() const override { return count_; }
  DroppedInput* element(std::uint64_t /*index*/) override {
    return createdAs(elementType_, ValueType::Null);
  }
  DroppedInput* input(const zn::String& /*name*/) override { return this; }
  void set(const zn::korvo_sdk::AttrData& structure) override {
    if (structure.type == ValueType::Array) elementType_ = ValueType(structure.elementType);
  }
  void assign(const zn::korvo_sdk::AttrData& value) override {
    if (value.type == ValueType::String) std::free(value.payload.string);
    if (value.type == ValueType::Buffer) std::free(value.payload.buffer.memory);
  }
  void connect(zn::korvo_sdk::interfaces::IOutput* /*output*/) override {}
  void disconnect() override {}
  void setNode(zn::korvo_sdk::interfaces::INode* /*node*/) override {}

 private:
  ValueType type_ = ValueType::Null;
  ValueType elementType_ = ValueType::Null;
  std::uint64_t count_ = 0;
};

}  // namespace detail

class HostScene::DroppedNode final : public zn::korvo_sdk::interfaces::INode {
 public:
  zn::String name() const override { return "(dropped)"; }
  zn::String type() const override { return zn::String(); }
  bool hasInput(const zn::String& /*name*/, ValueType /*type*/) override { return false; }
  detail::DroppedInput* input(const zn::String& /*name*/) override { return &input_; }
  detail::DroppedInput* createInput(const zn::String& name, ValueType type) override {
    return input_.createInput(name, type);
  }
  detail::DroppedInput* createArray(const zn::String& name, ValueType elementType) override {
    return input_.createArray(name, elementType);
  }
  HostOutput* output(const zn::String& name) override {
    std::unique_ptr<HostOutput>& output = outputs_[std::string(name.view())];
    if (output == nullptr) output = std::make_unique<HostOutput>(nullptr, name.view());
    return output.get();
  }

 private:
  detail::DroppedInput input_;
  std::map<std::string, std::unique_ptr<HostOutput>, std::less<>> outputs_;
};

}  // namespace vsa
