// Node: a node of a Scene, with a name, a type, inputs and outputs. The scene creates nodes.
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

/// A node of a Scene. It belongs to the scene and exists as long as the scene.
class VSA_API Node : public interfaces::INode {
 public:
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;

  /// The scene that created the node; never null.
  Scene* scene() const noexcept;
  /// Whether the scene has removed the node. Its memory stays valid until the scene is destroyed.
  bool isRemoved() const noexcept;
  /// The number of nodes that the scene had created before this one: `scene()->nodeAt(slot())` is
  /// this node.
  std::uint64_t slot() const noexcept;
  /// The name and the type as views, which are valid as long as the scene.
  std::string_view nameView() const noexcept;
  std::string_view typeView() const noexcept;
  /// Whether the type of the node was declared (see registerNodeType) when the node was created.
  bool isDeclared() const noexcept;
  /// The inputs that exist, in creation order. `inputAt` returns null if `index` is not less than
  /// the count.
  std::uint64_t inputCount() const noexcept;
  Input* inputAt(std::uint64_t index) const noexcept;
  /// The input of that name, or null. Unlike `input` it does not create a declared input.
  Input* inputNamed(std::string_view name) const noexcept;

  /// Removes an input of this node and frees its values; its memory stays until the scene is
  /// destroyed. Does nothing for any other input. The next look-up of a declared input creates it
  /// again. Takes time proportional to the number of inputs, and constant time for the last input.
  void removeInput(Input* input) noexcept;

  // The functions of INode. The comments of the interface apply; those below add the behaviour of
  // this scene.

  /// Also returns true for an input that the node's type declares and that does not exist yet. The
  /// first look-up creates such an input.
  bool hasInput(const String& name, AttrType type) override = 0;
  /// The input of that name, or null. Creates a declared input that does not exist yet.
  Input* input(const String& name) override = 0;
  /// If an input of that name and type exists, returns it. Returns null if the name exists with
  /// another type, or if the type of the node is declared without this input.
  Input* createInput(const String& name, AttrType type) override = 0;
  Input* createArray(const String& name, AttrType elementType) override = 0;
  /// A node of an open type has every output. A node of a declared type has the declared outputs;
  /// returns null for any other.
  Output* output(const String& name) override = 0;

 private:
  friend NodeImpl;

  Node() = default;
  ~Node() = default;
  const NodeImpl& impl() const noexcept;
};

}  // namespace zn::korvo_sdk
