// Node: a node of a Scene. It has a name, a type, inputs and outputs. Only scenes create such
// objects.
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

/// A node of a Scene. The scene owns it, and it exists as long as the scene. A function that
/// creates an input throws std::runtime_error if the depth limit of the scene is 0. Functions that
/// are not noexcept throw std::bad_alloc if memory runs out.
class VSA_API Node : public interfaces::INode {
 public:
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;

  /// The scene that created the node. It is never null.
  Scene* scene() const noexcept;
  /// Whether the node was removed from the scene. Its memory is valid until the scene is destroyed.
  bool isRemoved() const noexcept;
  /// The index of the node among all nodes that the scene has created, including removed ones.
  /// `scene()->nodeAt(slot())` is this node, or null if the node was removed.
  std::uint64_t slot() const noexcept;
  /// The name of the node, and the name of its type. Both views are valid as long as the scene.
  std::string_view nameView() const noexcept;
  std::string_view typeView() const noexcept;
  /// Whether the type of the node was declared (see registerNodeType) when the node was created.
  bool isDeclared() const noexcept;
  /// The number of inputs, without removed ones. A declared input is created by the first call of
  /// `hasInput`, `input`, `createInput` or `createArray` with its name.
  std::uint64_t inputCount() const noexcept;
  /// The input with this index, in the order of creation. It is null if `index` is not less than
  /// the count.
  Input* inputAt(std::uint64_t index) const noexcept;
  /// The input with this name, or null. Unlike `input`, the function does not create a declared
  /// input.
  Input* inputNamed(std::string_view name) const noexcept;

  /// Removes `input`, an input of this node, and frees its values. Does nothing if `input` is null,
  /// was removed, or is not a direct input of this node. The memory of the input is valid until the
  /// scene is destroyed. If the type of the node declares the input, the next call of `hasInput`,
  /// `input`, `createInput` or `createArray` with its name creates it again. Takes constant time
  /// for the last input, and time proportional to the number of inputs for all others.
  void removeInput(Input* input) noexcept;

  // The functions of INode. They do what the interface describes. The comments here describe what
  // this scene does in addition.

  /// Returns whether the node has an input with this name and type. The type Null means any type.
  /// If the type of the node declares the input and the input does not exist yet, the function
  /// first creates it.
  bool hasInput(const String& name, AttrType type) override = 0;
  /// The input with this name, or null. If the type of the node declares the input and it does not
  /// exist yet, creates it.
  Input* input(const String& name) override = 0;
  /// If the node has an input with this name and type, returns that input. Returns null if the
  /// input with this name has another type, or if the type of the node is declared and has no such
  /// input. Otherwise creates the input.
  Input* createInput(const String& name, AttrType type) override = 0;
  /// Does the same for an array. If an array with this name exists, returns it, whatever its
  /// element type is.
  Input* createArray(const String& name, AttrType elementType) override = 0;
  /// Returns the output with this name. If it does not exist yet, creates it. A node of an open
  /// type has every output. A node of a declared type has only the declared outputs, and the
  /// function returns null for others.
  Output* output(const String& name) override = 0;

 private:
  friend NodeImpl;

  Node() = default;
  ~Node() = default;
  const NodeImpl& impl() const noexcept;
};

}  // namespace zn::korvo_sdk
