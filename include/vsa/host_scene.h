// HostScene: a base class for the scene of a host. It implements all functions of the scene
// interface. A host overrides only the functions that it needs.
//
//   class Loader : public vsa::HostScene {
//     void onValue(const vsa::HostInput& input, const zn::korvo_sdk::AttrData& value) override {
//       if (input.node().type() == "mesh" && input.pathInNode() == "points") ...
//     }
//   };
//   Loader loader;
//   const vsa::ReadOutcome outcome = vsa::readFileInto(loader, "scene.vsa");
//
// By default, the classes store the nodes, the inputs and their types, because the reader asks for
// them again later. They free all values. A host overrides the functions that HostScene calls for
// each value or link. To use its own class of nodes, a host overrides makeNode. If one of these
// functions throws an exception, the reading ends: see ReadStatus::HostException and
// ReadStatus::OutOfMemory. Nodes, inputs and outputs exist as long as the scene.
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
#include <vsa/values/value_types.h>

namespace vsa {

class HostNode;
class HostScene;

/// An output of a HostNode.
class VSA_API HostOutput final : public zn::korvo_sdk::interfaces::IOutput {
 public:
  /// Creates an output of `node` with this name.
  HostOutput(HostNode* node, std::string_view name) : node_(node), name_(name) {}

  /// The node that the output belongs to. It is null if makeNode returned null for the node.
  HostNode* node() const noexcept { return node_; }
  /// The name of the output, with the spelling of the text. If the text uses a former name, it is
  /// the current name.
  const std::string& name() const noexcept { return name_; }

 private:
  HostNode* node_;
  std::string name_;
};

/// An input of a HostNode, an element of an array or a member of an object. It stores its name,
/// type, elements and members, and the element type of an array or buffer. It stores no value. A
/// host may derive a class from it: see HostNode::makeInput.
class VSA_API HostInput : public zn::korvo_sdk::interfaces::IInput {
 public:
  /// Creates an input of `node`. `parent` is the array or object that contains the input, or null
  /// for an input of the node itself. An element has an empty name and its index in the array. For
  /// any other input, `index` is 0. Throws an exception that ends the reading if the scene's
  /// depthLimit is exceeded.
  HostInput(HostNode& node, HostInput* parent, std::string_view name, std::uint64_t index,
            ValueType type);
  virtual ~HostInput();
  HostInput(const HostInput&) = delete;
  HostInput& operator=(const HostInput&) = delete;

  /// The node that the input belongs to, directly or through arrays and objects.
  HostNode& node() const noexcept { return node_; }
  /// The name of the input or member; empty for an element.
  const std::string& name() const noexcept { return name_; }
  /// The path of the input without the name of the node, such as "points" or "bones[2].at".
  std::string pathInNode() const;

  // The functions of IInput.

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
  void retain() override;

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
  bool isUnused_;  // whether this is an array element that counts as empty
  std::vector<std::unique_ptr<HostInput>> elements_;
  std::map<std::string, std::unique_ptr<HostInput>, std::less<>> members_;
};

/// A node of a HostScene. It stores its name, type, inputs and outputs. A host may derive a class
/// from it: see HostScene::makeNode.
class VSA_API HostNode : public zn::korvo_sdk::interfaces::INode {
 public:
  /// Creates a node of `scene` with this type and name.
  HostNode(HostScene& scene, std::string_view type, std::string_view name);
  virtual ~HostNode();
  HostNode(const HostNode&) = delete;
  HostNode& operator=(const HostNode&) = delete;

  /// The scene that the node belongs to.
  HostScene& scene() const noexcept { return scene_; }
  /// The name of the node, and the name of its type. Both views are valid as long as the node.
  std::string_view nodeName() const noexcept { return name_.view(); }
  std::string_view nodeType() const noexcept { return type_.view(); }

  // Notifications of changes. The default of each function calls the scene's function with the same
  // name.

  /// Called when the input gets a value, which has the type of the input. A value of type Object
  /// (`{}`) has no payload. The memory of the value is freed after the call.
  virtual void onValue(const HostInput& input, const zn::korvo_sdk::AttrData& value);
  /// Called when the input becomes a reference to `node`: after the last statement, like
  /// onConnection. A null `node` means a reference to no node, to a node for which makeNode
  /// returned null, or to a node that is dropped (see ReadOptions::wantedNames). Not called if the
  /// type of the input is neither Null nor Node: the reader then logs a warning.
  virtual void onReference(const HostInput& input, HostNode* node);
  /// Called when the input is connected to `output`. A null `output` means that the connection of
  /// the input is removed, or that the node of the output is dropped.
  virtual void onConnection(const HostInput& input, const HostOutput* output);

  /// Creates an input, an element or a member. The parameters are those of HostInput's constructor.
  /// If the function returns null, the statement is an error. The default returns a HostInput.
  virtual std::unique_ptr<HostInput> makeInput(HostInput* parent, std::string_view name,
                                               std::uint64_t index, ValueType type);

  // The functions of INode. A node has all inputs and outputs that a text names. An override of
  // `output` must return a HostOutput or null.

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

/// A scene of a host. No two of its nodes have the same name, except for removed nodes. One thread
/// at a time may read into it.
class VSA_API HostScene : public zn::korvo_sdk::interfaces::IScene {
 public:
  /// An empty scene.
  HostScene();
  virtual ~HostScene();
  HostScene(const HostScene&) = delete;
  HostScene& operator=(const HostScene&) = delete;

  /// Returns the node with this name. Returns null if there is none, or if makeNode returned null
  /// for it.
  HostNode* node(TextParameter name) const;

  /// The maximum number of empty array elements in the scene. If the scene has this many and a text
  /// makes an array grow, the reading ends with an error (ReadStatus::OverLimit). An element is
  /// empty until it gets a value, a member, an element or a link. A pending link counts, too.
  std::uint64_t emptyElementLimit = 524288;
  /// The maximum nesting level of inputs. An input of a node has level 1. If a text exceeds the
  /// maximum, the reading ends with an error (ReadStatus::OverLimit).
  std::uint64_t depthLimit = 256;

  // Notifications of changes. Except for makeNode, the defaults do nothing.

  /// Creates the node for a declaration or a `define` statement. Not called if the scene has a node
  /// with this name. For `define`, `type` is the name of the node. The default returns a HostNode.
  /// If the function returns null, the scene stores only the name of the node. The reader then
  /// checks the statements of the node, and the scene ignores its values and links.
  virtual std::unique_ptr<HostNode> makeNode(std::string_view type, std::string_view name);
  /// Called when a node is removed, except for nodes for which makeNode returned null. Look-ups of
  /// its name then return no node. The object exists as long as the scene.
  virtual void onRemove(HostNode& node);
  /// Called for values, references and connections by the functions of HostNode with the same
  /// names, unless a class derived from HostNode overrides those. Those functions describe the
  /// parameters.
  virtual void onValue(const HostInput& input, const zn::korvo_sdk::AttrData& value);
  virtual void onReference(const HostInput& input, HostNode* node);
  virtual void onConnection(const HostInput& input, const HostOutput* output);

  // The functions of IScene. By default, the four functions for the header do nothing.

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

  std::map<std::string, std::unique_ptr<HostNode>, std::less<>>
      nodes_;  // a null pointer if makeNode returned null
  std::vector<std::unique_ptr<HostNode>> removed_;
  std::unique_ptr<DroppedNode>
      dropped_;  // the object for all nodes for which makeNode returned null
  std::uint64_t emptyElementCount_ = 0;
};

}  // namespace vsa
