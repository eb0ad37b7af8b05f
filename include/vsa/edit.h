// Node and Input: views that can change what they show.
//
//   vsa::Scene scene;
//   vsa::Node sun = scene.addNode("lamp", "sun");
//   sun.set("power", 2.5).orThrow();
//   vsa::Status status = sun.set("color", vsa::rgba(1, 0.5, 0.25));
//
// Every change returns a Status and throws nothing. What was refused has changed nothing (but
// OutOfMemory may leave an input without a value), and what is missing refuses everything, so a
// chain of calls is safe. A change that texts cannot carry is refused: see EditError. Adding
// something keeps what there is; setting a value of another type than the input's replaces value
// and type. Nodes and inputs of declared types keep the types that are declared.
//
// Views and ranges of what is changed stay safe to use. What is removed gives its values' memory
// back at once, and its own 48 to 64 bytes with the scene.
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
#include <vsa/value.h>
#include <vsa/view.h>

namespace vsa {

/// Something new, or the reason why there is none: a Node or an Input, missing if `status` is not a
/// success.
template <class Handle>
struct [[nodiscard]] Added : Handle {
  Added(Handle handle) noexcept : Handle(handle) {}       // implicit: a success
  Added(Status refused) noexcept : status(refused) {}     // implicit: a refusal
  Added(EditError refused) noexcept : status(refused) {}  // implicit: a refusal
  Status status;
};

namespace detail {

// The number type of what a program keeps in an array: of float and of std::array<float, 3>, float.
template <class T>
struct NumberOf {
  static constexpr ElementType TYPE = componentTypeOf<T>();
};
template <class T, std::size_t N>
struct NumberOf<std::array<T, N>> : NumberOf<T> {};

// Whether an array of Element can be the elements of a buffer of the type, or their numbers.
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

  Input operator[](std::uint64_t element) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->element(element) : nullptr);
  }
  Input operator[](TextParameter member) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->memberNamed(member) : nullptr);
  }

  // Values. An earlier value of any type goes, with its elements and members; a connection stays.

  /// PlusInfinity, NotANumber, NulCharacter: texts cannot carry the value.
  VSA_API Status set(const Value& value) const noexcept;
  /// A buffer of the elements in `bytes`, which are copied. BadBufferType, BufferSize, NotANumber.
  VSA_API Status setBufferBytes(ElementType type, std::span<const std::byte> bytes) const noexcept;
  /// The same from an array of numbers (`std::vector<float>`), of std::array of numbers, or of a
  /// program's own struct that has the size and the layout of an element. BufferSize if the numbers
  /// are not those of the type, or not a whole number of elements.
  template <std::ranges::contiguous_range Range>
  requires std::is_trivially_copyable_v<std::ranges::range_value_t<Range>> Status
  setBuffer(ElementType type, const Range& elements)
  const noexcept {
    if (!detail::fitsBuffer<std::ranges::range_value_t<Range>>(type)) return EditError::BufferSize;
    return setBufferBytes(type, std::as_bytes(std::span(elements)));
  }
  /// A buffer of `count` elements in `memory`, which is moved in, not copied; after an error it is
  /// freed. BufferSize if `memory` is null and the count is not 0, or the bytes overflow. `memory`
  /// has at least `count` elements.
  VSA_API Status setBuffer(ElementType type, std::uint64_t count,
                           BufferMemory memory) const noexcept;
  /// No value: the type is Null again.
  VSA_API Status clear() const noexcept;

  // Links. Nodes are of the same scene.

  /// Refers to the node. Missing or Removed if there is no such node.
  VSA_API Status refer(NodeView node) const noexcept;
  /// A reference to no node, as `null` in a text.
  VSA_API Status referToNone() const noexcept;
  /// Connects the input to an output of the node. The value stays.
  VSA_API Status connect(NodeView node, TextParameter output) const noexcept;
  VSA_API Status disconnect() const noexcept;

  // Arrays. All elements of an array have one type; those of a Null array take links only. A text
  // cannot carry an array without elements.

  /// An array without elements, of elements of the type: the earlier elements go.
  VSA_API Status makeArray(ValueType elementType) const noexcept;
  /// A new element at the end, with the zero value of its type. BadBufferType for an array of
  /// buffers, whose elements need a buffer: see appendBuffer.
  VSA_API Added<Input> append() const noexcept;
  /// A new element at the end with that value.
  VSA_API Status append(const Value& value) const noexcept;
  /// A new element at the end of an array of buffers, with that buffer. See setBufferBytes.
  VSA_API Status appendBufferBytes(ElementType type,
                                   std::span<const std::byte> bytes) const noexcept;
  /// The same with the arguments of setBuffer: `appendBuffer(type, elements)` copies elements,
  /// `appendBuffer(type, count, std::move(memory))` moves memory in.
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

  /// An object without members: the earlier members go.
  VSA_API Status makeObject() const noexcept;
  /// The member of that name; a new one without a value if there is none. An input without a value
  /// becomes an object.
  VSA_API Added<Input> add(TextParameter member) const noexcept;
  /// `add`, and `set` of what it returned.
  VSA_API Status set(TextParameter member, const Value& value) const noexcept;
  /// Missing if there is no such member.
  VSA_API Status remove(TextParameter member) const noexcept;
};

/// A node that can be changed.
class Node : public NodeView {
 public:
  Node() = default;
  explicit Node(zn::korvo_sdk::Node* node) noexcept : NodeView(node) {}

  Input operator[](TextParameter input) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->inputNamed(input) : nullptr);
  }
  /// The input of that name; a new one without a value if there is none. Of a node of a declared
  /// type, what is declared only. A text carries an input without a value as `|= null`.
  VSA_API Added<Input> add(TextParameter input) const noexcept;
  /// `add`, and `set` of what it returned.
  VSA_API Status set(TextParameter input, const Value& value) const noexcept;
  /// Missing if there is no such input.
  VSA_API Status remove(TextParameter input) const noexcept;
};

}  // namespace vsa
