// Node and Input: views that can also change the node or input.
//
//   vsa::Scene scene;
//   vsa::Node sun = scene.addNode("lamp", "sun");
//   sun.set("power", 2.5).orThrow();
//   vsa::Status status = sun.set("color", vsa::rgba(1, 0.5, 0.25));
//
// Every change returns a Status, and none throws. A refused change changes nothing, except after
// OutOfMemory: the input may have no value, and the header of a scene may have lost comments. A
// missing node or input refuses every change, so calls can be chained without checks. A change that
// no text can represent is refused: see EditError.
//
// add() returns an existing input or member unchanged. set() of a value of another type replaces
// both value and type, unless the node's type is declared: then the declared types are kept.
//
// Views and ranges may still be used after a change. Removing a node or an input frees the memory
// of its values at once. The object itself, 48 to 64 bytes, is freed with the scene.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <ranges>
#include <span>
#include <string_view>
#include <type_traits>

#include <vsa/edit_status.h>
#include <vsa/foundation/api.h>
#include <vsa/text_parameter.h>
#include <vsa/values/value.h>
#include <vsa/view.h>

namespace vsa {

/// The Node or Input that was added. If it could not be added, it is missing, and `status` has the
/// reason.
template <class Handle>
struct [[nodiscard]] Added : Handle {
  Added(Handle handle) noexcept : Handle(handle) {}       // implicit: a success
  Added(Status refused) noexcept : status(refused) {}     // implicit: a refusal
  Added(EditError refused) noexcept : status(refused) {}  // implicit: a refusal
  Status status;
};

namespace detail {

// The type of the numbers in an element of an array: Float for float and for std::array<float, 3>.
template <class T>
struct NumberOf {
  static constexpr ElementType TYPE = componentTypeOf<T>();
};
template <class T, std::size_t N>
struct NumberOf<std::array<T, N>> : NumberOf<T> {};

// Whether values of type Element can be the elements of a buffer of the type, or the numbers of
// these elements.
template <class Element>
bool fitsBuffer(ElementType type) noexcept {
  constexpr ElementType NUMBER = NumberOf<Element>::TYPE;
  return NUMBER == ElementType::Null ? sizeof(Element) == zn::korvo_sdk::elementBytes(type)
                                     : NUMBER == zn::korvo_sdk::componentType(type);
}

}  // namespace detail

/// An input, an element or a member that can be changed.
class Input : public InputView {
 public:
  Input() = default;
  explicit Input(zn::korvo_sdk::Input* input) noexcept : InputView(input) {}

  /// The element at that index; missing if there is none.
  Input operator[](std::uint64_t element) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->element(element) : nullptr);
  }
  /// The member of that name; missing if there is none.
  Input operator[](TextParameter member) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->memberNamed(member) : nullptr);
  }

  // Values. A new value replaces the earlier one, with its elements and members. The input keeps
  // its connection.

  /// Sets the value. Fails with PlusInfinity, NotANumber or NulCharacter if no text can represent
  /// it.
  VSA_API Status set(const Value& value) const noexcept;
  /// Sets a buffer with a copy of `bytes`, which must be whole elements. Fails with BadBufferType,
  /// BufferSize or NotANumber if the bytes are not a buffer that a text can represent.
  VSA_API Status setBufferBytes(ElementType type, std::span<const std::byte> bytes) const noexcept;
  /// Sets a buffer with a copy of `elements`: an array of numbers (`std::vector<float>`), of
  /// std::array of numbers, or of a struct with the size and the layout of one element. Fails with
  /// BufferSize if the elements of the type have numbers of another type, or if the numbers are not
  /// whole elements.
  template <std::ranges::contiguous_range Range>
  requires std::is_trivially_copyable_v<std::ranges::range_value_t<Range>> Status
  setBuffer(ElementType type, const Range& elements)
  const noexcept {
    if (!detail::fitsBuffer<std::ranges::range_value_t<Range>>(type)) return EditError::BufferSize;
    return setBufferBytes(type, std::as_bytes(std::span(elements)));
  }
  /// Sets a buffer of the `count` elements in `memory`, which must have at least as many. The
  /// memory is not copied: the input owns it afterwards. It is freed if the change is refused.
  /// Fails with BufferSize if `memory` is null and the count is not 0, or if the number of bytes
  /// overflows.
  VSA_API Status setBuffer(ElementType type, std::uint64_t count,
                           BufferMemory memory) const noexcept;
  /// Removes the value: the type is Null again.
  VSA_API Status clear() const noexcept;

  // Links. The node must belong to the same scene; otherwise the functions fail with OtherScene.

  /// Makes the input refer to the node. Fails with Missing or Removed if there is no such node.
  VSA_API Status refer(NodeView node) const noexcept;
  /// Makes the input a reference to no node, as `null` does in a text.
  VSA_API Status referToNone() const noexcept;
  /// Connects the input to an output of the node. The input keeps its value. Fails with BadName,
  /// FormerName or NotDeclared if the node cannot have such an output.
  VSA_API Status connect(NodeView node, TextParameter output) const noexcept;
  /// Removes the connection, if there is one.
  VSA_API Status disconnect() const noexcept;

  // Arrays. All elements of an array have the same type. The elements of an array of type Null can
  // only have links. No text can represent an array without elements.

  /// Makes the input an array of that element type and removes all earlier elements.
  VSA_API Status makeArray(ValueType elementType) const noexcept;
  /// Appends an element with the zero value of its type. Fails with BadBufferType for an array of
  /// buffers: use appendBuffer for these.
  VSA_API Added<Input> append() const noexcept;
  /// Appends an element with that value.
  VSA_API Status append(const Value& value) const noexcept;
  /// Appends an element with that buffer to an array of buffers. See setBufferBytes.
  VSA_API Status appendBufferBytes(ElementType type,
                                   std::span<const std::byte> bytes) const noexcept;
  /// Appends an element with that buffer to an array of buffers. See setBuffer for the parameters.
  template <std::ranges::contiguous_range Range>
  requires std::is_trivially_copyable_v<std::ranges::range_value_t<Range>> Status
  appendBuffer(ElementType type, const Range& elements)
  const noexcept {
    if (!detail::fitsBuffer<std::ranges::range_value_t<Range>>(type)) return EditError::BufferSize;
    return appendBufferBytes(type, std::as_bytes(std::span(elements)));
  }
  VSA_API Status appendBuffer(ElementType type, std::uint64_t count,
                              BufferMemory memory) const noexcept;
  /// Removes elements from the end, or appends elements as append() does.
  VSA_API Status resize(std::uint64_t count) const noexcept;

  // Objects.

  /// Makes the input an object and removes all earlier members.
  VSA_API Status makeObject() const noexcept;
  /// Returns the member of that name. If there is none, adds one without a value. An input without
  /// a value becomes an object.
  VSA_API Added<Input> add(TextParameter member) const noexcept;
  /// Sets the value of the member of that name, and adds the member if there is none.
  VSA_API Status set(TextParameter member, const Value& value) const noexcept;
  /// Removes the member of that name. Fails with Missing if there is none.
  VSA_API Status remove(TextParameter member) const noexcept;
};

/// A node that can be changed.
class Node : public NodeView {
 public:
  Node() = default;
  explicit Node(zn::korvo_sdk::Node* node) noexcept : NodeView(node) {}

  /// The input of that name; missing if there is none.
  Input operator[](TextParameter input) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->inputNamed(input) : nullptr);
  }
  /// Returns the input of that name. If there is none, adds one without a value, which is `|= null`
  /// in a text. Fails with NotDeclared if the node's type is declared without this input.
  VSA_API Added<Input> add(TextParameter input) const noexcept;
  /// Sets the value of the input of that name, and adds the input if there is none.
  VSA_API Status set(TextParameter input, const Value& value) const noexcept;
  /// Removes the input of that name. Fails with Missing if there is none.
  VSA_API Status remove(TextParameter input) const noexcept;
};

}  // namespace vsa
