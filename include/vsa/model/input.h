// Input: an input of a node, an element of an array or a member of an object in a Scene, with its
// value. Nodes and inputs create inputs.
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

/// An input of a Scene. It belongs to the scene and exists as long as the scene. Its type is Null
/// while it has only a connection. Functions that set a value or create a member or an element
/// throw std::bad_alloc when memory runs out.
class VSA_API Input : public interfaces::IInput {
 public:
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  /// The name of a node's input or of a member; empty for an element.
  const String& name() const noexcept;
  /// The node that the input belongs to, directly or through arrays and objects; never null.
  Node* owner() const noexcept;
  /// The array or object that the input is an element or a member of; null for an input of a node.
  Input* parent() const noexcept;
  /// Whether the input was taken out of its node, array or object. Its memory stays until the scene
  /// is destroyed.
  bool isRemoved() const noexcept;
  /// The nesting level: 1 for an input of a node, and one more for each array or object around the
  /// input.
  unsigned level() const noexcept;

  // The value. There is one accessor for each type. On an input of another type it returns zero,
  // null or an empty value.

  bool boolean() const noexcept;
  /// The value of an Int. For a UInt, the same 64 bits as a signed number.
  std::int64_t integer() const noexcept;
  double real() const noexcept;
  /// The NUL-terminated characters of a String. Never null. Valid until the next assignment.
  const char* string() const noexcept;
  /// The components of a vector, position, quaternion, colour or matrix: `componentCount(type())`
  /// doubles. Valid until the next assignment. Null for every other type.
  const double* components() const noexcept;
  /// The buffer. Its memory belongs to the input and is valid until the next assignment. Before the
  /// first assignment the count is 0, the memory is null and the type is Null.
  BufferValue buffer() const noexcept;
  /// The node that the input refers to. Null if there is none or if it was removed.
  Node* node() const noexcept;
  /// The output that the input is connected to. Null if there is none or if its node was removed.
  Output* connection() const noexcept;
  /// The members of an object in creation order. `member` returns null if `index` is not less than
  /// the count.
  std::uint64_t memberCount() const noexcept;
  Input* member(std::uint64_t index) const noexcept;
  /// The member of that name, or null.
  Input* memberNamed(std::string_view name) const noexcept;

  // Changes that no statement of a text makes. A removed input takes 48 bytes of memory until the
  // scene is destroyed. Its values are freed at once.

  /// Frees the value and removes all elements and members: the input has type Null again. The input
  /// keeps its connection.
  void clearValue() noexcept;
  /// Removes elements from the end of an array until it has no more than `count`.
  void truncate(std::uint64_t count) noexcept;
  /// Removes a member of this object. Does nothing for any other input. Takes time proportional to
  /// the number of members, and constant time for the last member.
  void removeMember(Input* member) noexcept;

  // The functions of IInput. The comments of the interface apply; those below add the behaviour of
  // this scene.

  /// Does nothing if the input is not an array. Throws std::runtime_error at the limits of the
  /// scene.
  void appendElement() override = 0;

  /// Creates a member of an object or of a Null input, which becomes an object. If a member of that
  /// name and type exists, returns it. Returns null if the name exists with another type or begins
  /// with "[". Throws std::runtime_error at the depth limit of the scene.
  Input* createInput(const String& name, AttrType type) override = 0;
  Input* createArray(const String& name, AttrType elementType) override = 0;
  /// Returns null if `index` is not less than `count`, or if the input is not an array.
  Input* element(std::uint64_t index) override = 0;
  /// Returns null if there is no such member.
  Input* input(const String& name) override = 0;

  /// Gives a Null input the type of the record. Does nothing if the input has another type.
  void set(const AttrData& structure) override = 0;
  /// Takes ownership of the value's memory and frees the memory of the previous value. Copies a
  /// short string into memory of the scene and frees the memory of the value. Does nothing for an
  /// Object value. Frees a value of another type than the input's and does nothing else.
  void assign(const AttrData& value) override = 0;
  /// Connects to an output of the same scene. Does not change the type or the value.
  void connect(interfaces::IOutput* output) override = 0;
  void disconnect() override = 0;
  /// Refers to a node of the same scene. A Null input becomes a Node input. On an input of any
  /// other type, logs a warning and does nothing else.
  void setNode(interfaces::INode* node) override = 0;
  /// There is no reference count, because inputs exist as long as the scene. A retained array
  /// element is no longer empty (see Scene::emptyElementLimit).
  void retain() override = 0;
  void release() override = 0;

 private:
  friend InputImpl;

  Input() = default;
  ~Input() = default;
  const InputImpl& impl() const noexcept;
};

}  // namespace zn::korvo_sdk
