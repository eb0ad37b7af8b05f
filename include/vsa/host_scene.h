// A host's scene in few lines: base classes with a default for every operation of the scene
// interface.
//
//   class Loader : public vsa::HostScene {
//     void onValue(const vsa::HostInput& input, const zn::korvo_sdk::AttrData& value) override {
//       if (input.node().type() == "mesh" && input.path() == "points") ...
//     }
//   };
//   Loader loader;
//   const vsa::ReadOutcome outcome = vsa::readFileInto(loader, "scene.vsa");
//
// As they are, the classes keep nodes, inputs and their types, as the reader relies on it, and drop
// all values. A host overrides what it cares about: a function of HostScene that is told of every
// value or link, or makeNode, to have classes of its own. What these functions throw ends the
// reading (see ReadStatus). Whatever is made lives as long as the scene.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>
#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>
#include <vsa/text_parameter.h>
#include <vsa/value_types.h>

namespace vsa {

class HostNode;
class HostScene;

/// An output of a HostNode.
class VSA_API HostOutput final : public zn::korvo_sdk::interfaces::IOutput {
 public:
  HostOutput(HostNode* node, std::string_view name) : node_(node), name_(name) {}

  /// Null for a node that is not kept.
  HostNode* node() const noexcept { return node_; }
  const std::string& name() const noexcept { return name_; }

 private:
  HostNode* node_;
  std::string name_;
};

/// An input of a HostNode, an element or a member: its name, its type and what lies below it. A
/// class of the host's own may derive from it, see HostNode::makeInput.
class VSA_API HostInput : public zn::korvo_sdk::interfaces::IInput {
 public:
  /// `parent` is null for an input of the node. An element has an empty name and its index.
  HostInput(HostNode& node, HostInput* parent, std::string_view name, std::uint64_t index,
            ValueType type);
  virtual ~HostInput();
  HostInput(const HostInput&) = delete;
  HostInput& operator=(const HostInput&) = delete;

  HostNode& node() const noexcept { return node_; }
  /// Empty for an element.
  const std::string& name() const noexcept { return name_; }
  /// From the node on, without its name: "points", "bones[2].at".
  std::string pathInNode() const;

  // IInput.

  ValueType type() const override { return type_; }
  zn::String typeName() const override;
  zn::String path() const override;
  bool holdsBuffer(bool flag) const override;
  const zn::korvo_sdk::interfaces::IEnumeration* enumValues() const override { return nullptr; }
  ValueType elementType() const override { return elementType_; }
  ElementType bufferType() const override { return bufferType_; }
  void appendElement() override;
  bool isArray(bool flag) const override;
  bool refusesValues() const override { return false; }
  HostInput* createInput(const zn::String& name, ValueType type) override;
  HostInput* createArray(const zn::String& name, ValueType elementType) override;
  bool hasInput(const zn::String& name, ValueType type) override;
  std::uint64_t count() const override { return elements_.size(); }
  HostInput* element(std::uint64_t index) override;
  HostInput* input(const zn::String& name) override;
  void set(const zn::korvo_sdk::AttrData& structure) override;
  void assign(const zn::korvo_sdk::AttrData& value) override;
  void connect(zn::korvo_sdk::interfaces::IOutput* output) override;
  void disconnect() override;
  void setNode(zn::korvo_sdk::interfaces::INode* node) override;

 private:
  void become(ValueType type);
  void markUsed() noexcept;
  HostInput* createMember(const zn::String& name, ValueType type, ValueType elementType);

  HostNode& node_;
  HostInput* const parent_;
  const std::string name_;
  const std::uint64_t index_;
  const std::uint64_t level_;
  ValueType type_;
  ValueType elementType_ = ValueType::Null;
  ElementType bufferType_ = ElementType::Null;
  bool isUnused_;  // an element that only fills a gap
  std::vector<std::unique_ptr<HostInput>> elements_;
  std::map<std::string, std::unique_ptr<HostInput>, std::less<>> members_;
};

/// A node: its name, its type and its inputs. A class of the host's own may derive from it.
class VSA_API HostNode : public zn::korvo_sdk::interfaces::INode {
 public:
  HostNode(HostScene& scene, std::string_view type, std::string_view name);
  virtual ~HostNode();
  HostNode(const HostNode&) = delete;
  HostNode& operator=(const HostNode&) = delete;

  HostScene& scene() const noexcept { return scene_; }
  std::string_view nodeName() const noexcept { return name_.view(); }
  std::string_view nodeType() const noexcept { return type_.view(); }

  // What happens to its inputs. The defaults tell the scene.

  /// An input was given a value, of the input's type. Its memory is freed after the call.
  virtual void onValue(const HostInput& input, const zn::korvo_sdk::AttrData& value);
  /// An input was made to refer to a node, or with null to none or to one that is not kept.
  virtual void onReference(const HostInput& input, HostNode* node);
  /// An input was connected to an output, or with null to none.
  virtual void onConnection(const HostInput& input, const HostOutput* output);

  /// Makes an input, an element or a member, with the arguments of HostInput's constructor. Null
  /// refuses it, which is an error of the text. The default returns a HostInput.
  virtual std::unique_ptr<HostInput> makeInput(HostInput* parent, std::string_view name,
                                               std::uint64_t index, ValueType type);

  // INode. A node has every input and every output that a text names.

  zn::String name() const override { return name_; }
  zn::String type() const override { return type_; }
  bool hasInput(const zn::String& name, ValueType type) override;
  HostInput* input(const zn::String& name) override;
  HostInput* createInput(const zn::String& name, ValueType type) override;
  HostInput* createArray(const zn::String& name, ValueType elementType) override;
  zn::korvo_sdk::interfaces::IOutput* output(const zn::String& name) override;

 private:
  HostScene& scene_;
  zn::String type_;
  zn::String name_;
  std::map<std::string, std::unique_ptr<HostInput>, std::less<>> inputs_;
  std::map<std::string, std::unique_ptr<HostOutput>, std::less<>> outputs_;
};

/// A scene: nodes by name. One thread at a time may read into it.
class VSA_API HostScene : public zn::korvo_sdk::interfaces::IScene {
 public:
  HostScene();
  virtual ~HostScene();
  HostScene(const HostScene&) = delete;
  HostScene& operator=(const HostScene&) = delete;

  /// The node of that name, or null; also null for one that makeNode did not keep.
  HostNode* node(TextParameter name) const;

  /// Elements of arrays that only fill gaps, in the whole scene, and levels of inputs: a text that
  /// goes beyond ends the reading with an error.
  std::uint64_t emptyElementLimit = 524288;
  std::uint64_t depthLimit = 256;

  // What happens in the scene. The defaults do nothing.

  /// A node is declared or defined. Returns what stands for it; null keeps its name and nothing
  /// else of it: its values and links are read, checked and dropped. The default returns a
  /// HostNode.
  virtual std::unique_ptr<HostNode> makeNode(std::string_view type, std::string_view name);
  /// A node is removed. It lives on, for the text may still name it.
  virtual void onRemove(HostNode& node);
  /// See HostNode, whose defaults call these.
  virtual void onValue(const HostInput& input, const zn::korvo_sdk::AttrData& value);
  virtual void onReference(const HostInput& input, HostNode* node);
  virtual void onConnection(const HostInput& input, const HostOutput* output);

  // IScene.

  zn::korvo_sdk::interfaces::INode* findNode(const zn::String& name) override;
  zn::korvo_sdk::interfaces::INode* createNode(const zn::String& type, const zn::String& name,
                                               const zn::String& reserved) override;
  zn::korvo_sdk::interfaces::INode* defineNode(const zn::String& name) override;
  void removeNode(const zn::String& name) override;
  void setFileVersion(unsigned long long version) override;
  void setFileTime(const zn::String& time) override;
  void pushFileComment(const zn::String& comment) override;
  void clearComments() override;

 private:
  friend class HostInput;
  class DroppedNode;

  std::map<std::string, std::unique_ptr<HostNode>, std::less<>> nodes_;  // null: not kept
  std::vector<std::unique_ptr<HostNode>> removed_;
  std::unique_ptr<DroppedNode> dropped_;  // stands for all nodes that are not kept
  std::uint64_t emptyElementCount_ = 0;
};

}  // namespace vsa
