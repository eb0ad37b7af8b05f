// Input: a place for one value of a scene: an input of a node, an element of an array or a member
// of an object. Inputs are made by nodes and by each other.
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

/// An input of a Scene. It belongs to the scene and lives as long as the scene. An input that only
/// a link has named has type Null. Setting a value, a member or an element throws std::bad_alloc
/// when memory runs out.
class VSA_API Input : public interfaces::IInput {
 public:
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  /// The name of an input or a member; empty for an element.
  const String& name() const noexcept;
  /// The node that the input belongs to, however deep; never null.
  Node* owner() const noexcept;
  /// The array or object that the input is an element or a member of; null for an input of a node.
  Input* parent() const noexcept;
  /// Whether the input was taken out of its node, array or object. Its memory stays until the scene
  /// is destroyed.
  bool isRemoved() const noexcept;
  /// 1 for an input of a node, one more for each array or object around the input.
  unsigned level() const noexcept;

  // The value. Each accessor is for inputs of its type; for any other type it returns zero, null or
  // an empty value.

  bool boolean() const noexcept;
  /// Of an Int; of a UInt the same 64 bits.
  std::int64_t integer() const noexcept;
  double real() const noexcept;
  /// The NUL-terminated characters of a String. Never null; valid until the next value.
  const char* string() const noexcept;
  /// The components of a vector, position, quaternion, colour or matrix: `componentCount(type())`
  /// doubles, valid until the next value. Null for every other type.
  const double* components() const noexcept;
  /// The buffer. Its memory belongs to the input and is valid until the next value. While no buffer
  /// was set, count is 0, memory null and type Null.
  BufferValue buffer() const noexcept;
  /// The node that the input refers to; null for none and for a removed node.
  Node* node() const noexcept;
  /// The output that the input is connected to; null for none and for an output of a removed node.
  Output* connection() const noexcept;
  /// The members of an object in creation order: how many, and the i-th, or null past the end.
  std::uint64_t memberCount() const noexcept;
  Input* member(std::uint64_t index) const noexcept;
  /// The member of that name, or null.
  Input* memberNamed(std::string_view name) const noexcept;

  // Changes that texts cannot make. What is removed keeps its place in memory, 48 bytes, until the
  // scene is destroyed; its values are freed at once.

  /// Frees the value and removes all elements and members: the input has type Null again. A
  /// connection stays.
  void clearValue() noexcept;
  /// Removes elements from the end of an array until it has no more than `count`.
  void truncate(std::uint64_t count) noexcept;
  /// Removes a member of this object. Does nothing for any other input. Takes time proportional to
  /// the object's members, constant time for the last one.
  void removeMember(Input* member) noexcept;

  // IInput. What the interface says of an operation holds here too; the comments add what this
  // scene does.

  /// Does nothing to an input that is not an array. Throws std::runtime_error at the scene's
  /// limits.
  void appendElement() override = 0;

  /// Objects take members, and so do Null inputs, which become objects. Returns an existing member
  /// of that name and type. Null if the name exists with another type or begins with "[". Throws
  /// std::runtime_error at the scene's depth limit.
  Input* createInput(const String& name, AttrType type) override = 0;
  Input* createArray(const String& name, AttrType elementType) override = 0;
  /// Null past the end, and for an input that is not an array.
  Input* element(std::uint64_t index) override = 0;
  /// Null if there is no such member.
  Input* input(const String& name) override = 0;

  /// A Null input takes on the record's type. An input of any other type than the record's stays as
  /// it is.
  void set(const AttrData& structure) override = 0;
  /// Takes ownership of the value's memory and frees the value held before. A short string is
  /// copied into memory of the scene and its own memory freed. An Object value changes nothing. A
  /// value of another type than the input's is discarded and its memory freed.
  void assign(const AttrData& value) override = 0;
  /// Connects to an output of the same scene. Type and value stay.
  void connect(interfaces::IOutput* output) override = 0;
  void disconnect() override = 0;
  /// Refers to a node of the same scene. A Null input becomes a Node input; an input of any other
  /// type logs a warning and stays as it is.
  void setNode(interfaces::INode* node) override = 0;
  /// Not counted, for inputs live as long as the scene. A retained array element is in use: it no
  /// longer counts as empty (see Scene::emptyElementLimit).
  void retain() override = 0;
  void release() override = 0;

 private:
  friend InputImpl;

  Input() = default;
  ~Input() = default;
  const InputImpl& impl() const noexcept;
};

}  // namespace zn::korvo_sdk
