// Node: a named thing of a named type, with inputs and outputs. Nodes are made by their scene.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/model/input.h>
#include <vsa/model/output.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

class NodeImpl;
class Scene;

/// A node of a Scene. It belongs to the scene and lives as long as the scene.
class VSA_API Node : public interfaces::INode {
 public:
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;

  /// The scene that made the node; never null.
  Scene* scene() const noexcept;
  /// True once the scene has removed the node. Its memory stays until the scene is destroyed.
  bool isRemoved() const noexcept;
  /// Nodes that the scene had made before this one: `scene()->nodeAt(slot())`.
  std::uint64_t slot() const noexcept;
  /// Name and type without a copy, valid as long as the scene.
  std::string_view nameView() const noexcept;
  std::string_view typeView() const noexcept;
  /// Whether the node's type was declared (see registerNodeType) when the node was made.
  bool isDeclared() const noexcept;
  /// The inputs that exist, in creation order: how many, and the i-th, or null past the end.
  std::uint64_t inputCount() const noexcept;
  Input* inputAt(std::uint64_t index) const noexcept;
  /// The input of that name that exists, or null. Instantiates no declared input.
  Input* inputNamed(std::string_view name) const noexcept;

  /// Removes an input of this node and frees its values; its memory stays until the scene is
  /// destroyed. Does nothing for any other input. A declared input is instantiated again when it is
  /// next looked up. Takes time proportional to the node's inputs, constant time for the last one.
  void removeInput(Input* input) noexcept;

  // INode. What the interface says of an operation holds here too; the comments add what this scene
  // does.

  /// An input that the node's type declares exists: it is instantiated by the first look-up.
  bool hasInput(const String& name, AttrType type) override = 0;
  /// The input of that name, or null. Instantiates a declared input.
  Input* input(const String& name) override = 0;
  /// Returns an existing input of that name and type. Null if the name exists with another type,
  /// and if the node's type is declared and does not declare the name.
  Input* createInput(const String& name, AttrType type) override = 0;
  Input* createArray(const String& name, AttrType elementType) override = 0;
  /// An open type has every output it is asked for. A declared type has the outputs it declares;
  /// null for any other.
  Output* output(const String& name) override = 0;

 private:
  friend NodeImpl;

  Node() = default;
  ~Node() = default;
  const NodeImpl& impl() const noexcept;
};

}  // namespace zn::korvo_sdk
