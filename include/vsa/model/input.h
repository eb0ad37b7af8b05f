// Input: an input of a node, an element of an array or a member of an object, with its value. Only
// nodes and inputs of a Scene create such objects.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

class InputImpl;
class Node;
class Output;

/// An input of a Scene. The scene owns it, and it exists as long as the scene. Unless its node type
/// declares it, its type is Null while it only has a connection. A function that sets a value or
/// creates a member or element throws std::bad_alloc if memory runs out.
class VSA_API Input : public interfaces::IInput {
 public:
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  /// The name of this input or member. It is empty for an element of an array.
  const String& name() const noexcept;
  /// The node that the input belongs to, directly or through arrays and objects. It is never null.
  Node* owner() const noexcept;
  /// The array or object that contains this element or member. It is null for an input of a node.
  Input* parent() const noexcept;
  /// Whether the input was removed from its node, array or object. Its memory is valid until the
  /// scene is destroyed.
  bool isRemoved() const noexcept;
  /// The nesting level. An input of a node has level 1. An element or member has the level of its
  /// array or object plus 1.
  unsigned level() const noexcept;

  // The value. There is one function for each type. If the input has another type, the function
  // returns zero, null or an empty value.

  /// The value of a Bool.
  bool boolean() const noexcept;
  /// The value of an Int. For a UInt, the result is the signed number with the same 64 bits.
  std::int64_t integer() const noexcept;
  /// The value of a Real.
  double real() const noexcept;
  /// The characters of a String, with a NUL at the end. The pointer is never null. It is valid
  /// until the next assignment.
  const char* string() const noexcept;
  /// The components of a vector, position, quaternion, colour or matrix: `componentCount(type())`
  /// numbers. The pointer is valid until the next assignment. It is null for every other type.
  const double* components() const noexcept;
  /// The buffer. The input owns its memory, which is valid until the next assignment. Before the
  /// first assignment, the count is 0 and the memory is null. The type is then Null, unless `set`
  /// or the node type has set it.
  BufferValue buffer() const noexcept;
  /// The node that the input refers to. It is null if the input refers to no node or if the node
  /// was removed.
  Node* node() const noexcept;
  /// The output that the input is connected to. It is null if there is no connection or if the node
  /// of the output was removed.
  Output* connection() const noexcept;
  /// The number of members of an object.
  std::uint64_t memberCount() const noexcept;
  /// The member with this index, in the order of creation. It is null if `index` is not less than
  /// the count.
  Input* member(std::uint64_t index) const noexcept;
  /// The member with this name, or null.
  Input* memberNamed(std::string_view name) const noexcept;

  // Changes that no statement of a text makes. If they remove an input, the memory of its values is
  // freed at once, or used for later values of the scene. The object of the input takes 48 bytes,
  // which are freed with the scene.

  /// Frees the value and removes all elements and members. The type is then Null, even if the node
  /// type declares another type. The connection of the input stays.
  void clearValue() noexcept;
  /// Removes elements from the end of an array until at most `count` elements are left. Does
  /// nothing if the input is not an array.
  void truncate(std::uint64_t count) noexcept;
  /// Removes `member`, a member of this object. Does nothing if `member` belongs to another input.
  /// Takes constant time for the last member, and time proportional to the number of members for
  /// all others.
  void removeMember(Input* member) noexcept;

  // The functions of IInput. They do what the interface describes. The comments here describe what
  // this scene does in addition.

  /// Does nothing if the input is not an array. Throws std::runtime_error if the scene would exceed
  /// one of its limits.
  void appendElement() override = 0;

  /// Creates a member of an object. An input of type Null first becomes an object. If a member with
  /// this name and type exists, returns that member. Returns null if this input has another type
  /// than Object or Null, if a member with this name has another type, or if the name begins with
  /// "[". Throws std::runtime_error if the input would exceed the depth limit of the scene.
  Input* createInput(const String& name, AttrType type) override = 0;
  Input* createArray(const String& name, AttrType elementType) override = 0;
  /// Returns null if the input is not an array, or if `index` is not less than `count`.
  Input* element(std::uint64_t index) override = 0;
  /// Returns null if there is no member with this name.
  Input* input(const String& name) override = 0;

  /// Sets the element type of an array or buffer. `structure` has the type Array, Buffer or Object.
  /// An input of type Null first takes this type. A buffer becomes empty. Does nothing if the types
  /// then differ.
  void set(const AttrData& structure) override = 0;
  /// Takes ownership of the memory of `value` and frees the memory of the previous value. A short
  /// string is copied into memory of the scene, and its own memory is freed. An input of type Null
  /// first takes the type of the value. If the types still differ, the function frees the value and
  /// keeps the previous one. A value of type Object has no effect.
  void assign(const AttrData& value) override = 0;
  /// Connects the input to an output of the same scene. Type and value do not change.
  void connect(interfaces::IOutput* output) override = 0;
  void disconnect() override = 0;
  /// Makes the input refer to a node of the same scene, or to no node if `node` is null. If its
  /// type is Null, the type becomes Node. If the type is neither Null nor Node, the function logs a
  /// warning and does nothing else.
  void setNode(interfaces::INode* node) override = 0;
  /// Marks an array element as no longer empty (see Scene::emptyElementLimit). The function counts
  /// nothing, because inputs exist as long as the scene.
  void retain() override = 0;
  /// Does nothing.
  void release() override = 0;

 private:
  friend InputImpl;

  Input() = default;
  ~Input() = default;
  const InputImpl& impl() const noexcept;
};

}  // namespace zn::korvo_sdk
