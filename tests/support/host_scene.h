// HostScene: a host's scene that records the reader's calls and refuses some of them. Each call
// that changes something is recorded as one line. For queries, the scene checks that their
// arguments are as the interface documents.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>
#include "tests/support/text.h"

namespace vsa_tests {

namespace sdk = zn::korvo_sdk;
namespace host = zn::korvo_sdk::interfaces;

/// The calls that a host's scene refuses, and the record of its calls.
struct HostOptions {
  bool refusesNodes = false;     ///< createNode and defineNode return null.
  bool refusesInputs = false;    ///< createInput of nodes returns null.
  bool forgetsInputs = false;    ///< hasInput of nodes returns false, even for existing inputs.
  bool refusesArrays = false;    ///< createArray of nodes returns null.
  bool refusesMembers = false;   ///< createInput and createArray of inputs return null.
  bool refusesElements = false;  ///< appendElement adds nothing.
  bool losesElements = false;    ///< element returns null.
  bool losesInputs = false;      ///< input of nodes and of inputs returns null.
  bool refusesOutputs = false;   ///< output returns null.
  std::vector<std::string> calls;
  /// The calls of isArray, refusesValues, holdsBuffer and bufferType, one line for each.
  std::vector<std::string> queries;
  int typesAsked = 0;  ///< How often type() of nodes was called.
  int namesAsked = 0;  ///< How often name() of nodes was called.
  /// A function that name() of nodes calls.
  std::function<void()> onNameAsked;
  /// A function that type() of nodes calls.
  std::function<void()> onTypeAsked;
  /// A function that is called with each line before it is recorded. It may throw.
  std::function<void(const std::string&)> onCall;

  void record(const std::string& line) {
    if (onCall) onCall(line);
    calls.push_back(line);
  }
};

class HostOutput final : public host::IOutput {
 public:
  explicit HostOutput(std::string where) : where_(std::move(where)) {}
  const std::string& where() const { return where_; }

 private:
  std::string where_;
};

class HostNode;

class HostInput final : public host::IInput {
 public:
  HostInput(HostOptions& options, std::string where, sdk::AttrType type)
      : kind(type), options_(options), where_(std::move(where)) {}

  // The results of the input's functions. Tests may change these members.
  sdk::AttrType kind;
  sdk::AttrType elements = sdk::AttrType::Null;
  sdk::DataType buffers = sdk::DataType::Null;
  bool refuses = false;
  bool deniesBeingArray = false;  ///< isArray returns false for every type.
  bool countsNone = false;        ///< count returns 0.
  const host::IEnumeration* enumeration = nullptr;
  int held = 0;  ///< The number of calls of retain() minus the number of calls of release().

  sdk::AttrType type() const override { return kind; }
  zn::String typeName() const override { return sdk::attrTypeName(kind); }
  zn::String path() const override { return string(where_); }
  bool holdsBuffer(bool flag) const override {
    EXPECT_FALSE(flag);
    options_.queries.push_back(where_ + ".holdsBuffer");
    return kind == sdk::AttrType::Buffer;
  }
  const host::IEnumeration* enumValues() const override { return enumeration; }
  sdk::AttrType elementType() const override { return elements; }
  sdk::DataType bufferType() const override {
    options_.queries.push_back(where_ + ".bufferType");
    return buffers;
  }
  void appendElement() override {
    options_.record(where_ + ".appendElement");
    if (options_.refusesElements) return;
    list_.emplace_back(options_, where_ + '[' + std::to_string(list_.size()) + ']', elements);
  }
  bool isArray(bool flag) const override {
    EXPECT_FALSE(flag);
    options_.queries.push_back(where_ + ".isArray");
    return kind == sdk::AttrType::Array && !deniesBeingArray;
  }
  bool refusesValues() const override {
    options_.queries.push_back(where_ + ".refusesValues");
    return refuses;
  }

  host::IInput* createInput(const zn::String& name, sdk::AttrType type) override {
    options_.record(where_ + ".createInput " + text(name) + ' ' + sdk::attrTypeName(type));
    return options_.refusesMembers ? nullptr : add(text(name), type);
  }
  host::IInput* createArray(const zn::String& name, sdk::AttrType elementType) override {
    options_.record(where_ + ".createArray " + text(name) + ' ' + sdk::attrTypeName(elementType));
    if (options_.refusesMembers) return nullptr;
    HostInput* const made = add(text(name), sdk::AttrType::Array);
    made->elements = elementType;
    return made;
  }
  bool hasInput(const zn::String& name, sdk::AttrType type) override {
    EXPECT_EQ(type, sdk::AttrType::Null) << "any type will do";
    return members_.count(text(name)) != 0;
  }
  std::uint64_t count() const override { return countsNone ? 0 : list_.size(); }
  host::IInput* element(std::uint64_t index) override {
    EXPECT_LT(index, count());
    return options_.losesElements ? nullptr : &list_[index];
  }
  host::IInput* input(const zn::String& name) override {
    return options_.losesInputs ? nullptr : &members_.at(text(name));
  }

  void set(const sdk::AttrData& structure) override {
    const bool isArray = structure.type == sdk::AttrType::Array;
    const char* const of =
        isArray ? sdk::attrTypeName(static_cast<sdk::AttrType>(structure.elementType))
                : sdk::dataTypeName(static_cast<sdk::DataType>(structure.elementType));
    options_.record(where_ + ".set " + sdk::attrTypeName(structure.type) + ' ' + of);
    if (isArray) elements = static_cast<sdk::AttrType>(structure.elementType);
    if (!isArray) buffers = static_cast<sdk::DataType>(structure.elementType);
  }
  void assign(const sdk::AttrData& value) override {
    options_.record(where_ + ".assign " + sdk::attrTypeName(value.type) + shown(value));
    if (value.type == sdk::AttrType::Buffer) buffers = value.payload.buffer.type;
    if (value.type == sdk::AttrType::Buffer) std::free(value.payload.buffer.memory);
    if (value.type == sdk::AttrType::String) std::free(value.payload.string);
  }
  void connect(host::IOutput* output) override {
    options_.record(where_ + ".connect " + static_cast<HostOutput*>(output)->where());
  }
  void disconnect() override { options_.record(where_ + ".disconnect"); }
  void setNode(host::INode* node) override {
    options_.record(where_ + ".setNode " + (node == nullptr ? "null" : text(node->name())));
  }
  void retain() override {
    options_.record(where_ + ".retain");
    ++held;
  }
  void release() override {
    options_.record(where_ + ".release");
    --held;
  }

  /// Removes the last elements of an array so that `size` elements remain. Pointers to removed
  /// elements become invalid.
  void shrinkTo(std::size_t size) {
    while (list_.size() > size) list_.pop_back();
  }

 private:
  HostInput* add(const std::string& name, sdk::AttrType type) {
    return &members_.try_emplace(name, options_, where_ + '.' + name, type).first->second;
  }

  static std::string shown(const sdk::AttrData& value) {
    switch (value.type) {
      case sdk::AttrType::Bool:
        return value.payload.boolean ? " true" : " false";
      case sdk::AttrType::Int:
      case sdk::AttrType::UInt:
        return ' ' + std::to_string(value.payload.integer);
      case sdk::AttrType::Real:
        return text(zn::String::format(" %g", value.payload.real));
      case sdk::AttrType::String:
        return std::string(" ") + value.payload.string;
      case sdk::AttrType::Buffer:
        return std::string(" ") + sdk::dataTypeName(value.payload.buffer.type) + ' ' +
               std::to_string(value.payload.buffer.count);
      default:
        return "";
    }
  }

  HostOptions& options_;
  std::string where_;
  std::map<std::string, HostInput> members_;
  std::deque<HostInput> list_;
};

class HostNode final : public host::INode {
 public:
  HostNode(HostOptions& options, std::string type, std::string name)
      : options_(options), type_(std::move(type)), name_(std::move(name)) {}

  zn::String name() const override {
    ++options_.namesAsked;
    if (options_.onNameAsked) options_.onNameAsked();
    return string(name_);
  }
  zn::String type() const override {
    ++options_.typesAsked;
    if (options_.onTypeAsked) options_.onTypeAsked();
    return string(type_);
  }
  bool hasInput(const zn::String& name, sdk::AttrType type) override {
    EXPECT_EQ(type, sdk::AttrType::Null) << "any type will do";
    return inputs_.count(text(name)) != 0 && !options_.forgetsInputs;
  }
  HostInput* input(const zn::String& name) override {
    return options_.losesInputs ? nullptr : &inputs_.at(text(name));
  }
  HostInput* createInput(const zn::String& name, sdk::AttrType type) override {
    options_.record(name_ + ".createInput " + text(name) + ' ' + sdk::attrTypeName(type));
    return options_.refusesInputs ? nullptr : add(text(name), type);
  }
  HostInput* createArray(const zn::String& name, sdk::AttrType elementType) override {
    options_.record(name_ + ".createArray " + text(name) + ' ' + sdk::attrTypeName(elementType));
    if (options_.refusesArrays) return nullptr;
    HostInput* const made = add(text(name), sdk::AttrType::Array);
    made->elements = elementType;
    return made;
  }
  host::IOutput* output(const zn::String& name) override {
    if (options_.refusesOutputs) return nullptr;
    return &outputs_.try_emplace(text(name), name_ + '.' + text(name)).first->second;
  }

  /// Changes the result of name().
  void rename(std::string name) { name_ = std::move(name); }

  /// Adds an input without recording a call.
  HostInput* add(const std::string& name, sdk::AttrType type) {
    return &inputs_.try_emplace(name, options_, name_ + '.' + name, type).first->second;
  }

 private:
  HostOptions& options_;
  std::string type_;
  std::string name_;
  std::map<std::string, HostInput> inputs_;
  std::map<std::string, HostOutput> outputs_;
};

class HostScene final : public host::IScene {
 public:
  HostOptions options;

  HostNode* findNode(const zn::String& name) override {
    const auto at = nodes_.find(text(name));
    return at == nodes_.end() ? nullptr : &at->second;
  }
  HostNode* createNode(const zn::String& type, const zn::String& name,
                       const zn::String& reserved) override {
    options.record("createNode " + text(type) + ' ' + text(name) + " <" + text(reserved) + '>');
    return options.refusesNodes ? nullptr : add(text(type), text(name));
  }
  HostNode* defineNode(const zn::String& name) override {
    options.record("defineNode " + text(name));
    return options.refusesNodes ? nullptr : add(text(name), text(name));
  }
  void removeNode(const zn::String& name) override {
    options.record("removeNode " + text(name));
    nodes_.erase(text(name));
  }
  void setFileVersion(unsigned long long version) override {
    options.record("setFileVersion " + std::to_string(version));
  }
  void setFileTime(const zn::String& time) override {
    options.record("setFileTime <" + text(time) + '>');
  }
  void pushFileComment(const zn::String& comment) override {
    options.record("pushFileComment <" + text(comment) + '>');
  }
  void clearComments() override { options.record("clearComments"); }

  /// Adds a node without recording a call.
  HostNode* add(const std::string& type, const std::string& name) {
    return &nodes_.try_emplace(name, options, type, name).first->second;
  }

 private:
  std::map<std::string, HostNode> nodes_;
};

}  // namespace vsa_tests
