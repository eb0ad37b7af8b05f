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

/// An input of a Scene. The scene owns it, and it exists as long as the scene. The type of an input
/// that has only a connection is Null, except for a declared input and for an element of an array
/// with an element type. A function that is not noexcept throws std::bad_alloc if memory runs out.
class VSA_API Input : public interfaces::IInput {
 public:
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  /// The name of this input or member. It is empty for an element of an array.
  const String& name() const noexcept;
  /// The node that the input belongs to, directly or through arrays and objects. It is never null.
  Node* owner() const noexcept;
  /// The array or object that contains this element or member. It is null for an input of a node. A
  /// removed element or member keeps its parent.
  Input* parent() const noexcept;
  /// Whether the input was removed from its node, array or object, directly or with an array or
  /// object that contains it. It is false for an input of a removed node. The memory of a removed
  /// input is valid until the scene is destroyed.
  bool isRemoved() const noexcept;
  /// The nesting level. An input of a node has level 1. An element or member has the level of its
  /// array or object plus 1.
  unsigned level() const noexcept;

  // The value. A function for another type than that of the input returns false, 0, null, an empty
  // string or an empty buffer. Pointers to values are valid until the value changes or the input is
  // removed.

  /// The value of a Bool.
  bool boolean() const noexcept;
  /// The value of an Int. For a UInt, the result is the signed number with the same 64 bits.
  std::int64_t integer() const noexcept;
  /// The value of a Real.
  double real() const noexcept;
  /// The characters of a String, with a NUL at the end. The pointer is never null.
  const char* string() const noexcept;
  /// The components of a vector, position, quaternion, colour or matrix: `componentCount(type())`
  /// numbers. The pointer is null for every other type.
  const double* components() const noexcept;
  /// The buffer. The input owns its memory. If no buffer was assigned, the count is 0 and the
  /// memory is null. The element type is then Null, unless `set` or the node type has set it.
  BufferValue buffer() const noexcept;
  /// The node that the input refers to. It is null if the input refers to no node or if the node
  /// was removed.
  Node* node() const noexcept;
  /// The output that the input is connected to, for an input of any type. It is null if there is no
  /// connection or if the node of the output was removed.
  Output* connection() const noexcept;
  /// The number of members of an object.
  std::uint64_t memberCount() const noexcept;
  /// The member with this index, in the order of creation. It is null if `index` is not less than
  /// the count.
  Input* member(std::uint64_t index) const noexcept;
  /// The member with this name, or null.
  Input* memberNamed(std::string_view name) const noexcept;

  // Changes that no statement of a text makes. If they remove an input, the memory of its values is
  // freed at once, or used for later values of the scene. The object of the input (48 bytes on
  // 64-bit systems) and its name are freed with the scene.

  /// Frees the value and removes all elements and members. The type is then Null, even if the node
  /// type or the element type of the array is another type. The connection of the input stays.
  void clearValue() noexcept;
  /// Removes elements from the end of an array until at most `count` elements are left. Does
  /// nothing if the input is not an array.
  void truncate(std::uint64_t count) noexcept;
  /// Removes `member`, a member of this object. Does nothing if `member` is null, was removed or
  /// belongs to another input. Takes constant time for the last member, and time proportional to
  /// the number of members for all others.
  void removeMember(Input* member) noexcept;

  // The functions of IInput. They do what the interface describes. The comments here describe what
  // this scene does in addition.

  /// Does nothing if the input is not an array. Throws std::runtime_error if the array has 2^32
  /// elements, or if a limit of the scene would be exceeded (see Scene).
  void appendElement() override = 0;

  /// Creates a member of an object. An input of type Null first becomes an object. If a member with
  /// this name and type exists, returns that member. Returns null if this input has another type
  /// than Object or Null, if a member with this name has another type, or if the name begins with
  /// "[". Throws std::runtime_error if the new member would exceed the depth limit of the scene.
  Input* createInput(const String& name, AttrType type) override = 0;
  /// Does the same for an array. If an array with this name exists, returns it, whatever its
  /// element type is.
  Input* createArray(const String& name, AttrType elementType) override = 0;
  /// Returns null if the input is not an array, or if `index` is not less than `count`.
  Input* element(std::uint64_t index) override = 0;
  /// Returns null if there is no member with this name.
  Input* input(const String& name) override = 0;

  /// Sets the element type of an array or buffer. `structure` has the type Array, Buffer or Object.
  /// An input of type Null first takes this type. A buffer becomes empty. The elements of an array
  /// stay. Does nothing if the types then differ. For Object, only the type of an input of type
  /// Null changes.
  void set(const AttrData& structure) override = 0;
  /// Takes ownership of the memory of `value` and frees the memory of the previous value. A string
  /// of at most 511 characters is copied into memory of the scene, and its own memory is freed. An
  /// input of type Null first takes the type of the value. If the types still differ, the function
  /// frees the value and keeps the previous one. For a buffer, `payload.buffer.type` is the element
  /// type, and `elementType` is ignored. A value of type Object has no effect, except that an array
  /// element then no longer counts as empty. If memory runs out, the value is freed, too.
  void assign(const AttrData& value) override = 0;
  /// Connects the input to an output of the same scene, which the function does not check. Type and
  /// value do not change.
  void connect(interfaces::IOutput* output) override = 0;
  void disconnect() override = 0;
  /// Makes the input refer to a node of the same scene (which the function does not check), or to
  /// no node if `node` is null. If its type is Null, the type becomes Node. If the type is neither
  /// Null nor Node, the function logs a warning and does nothing else.
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
