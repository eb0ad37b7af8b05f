// Node and Input: views through which a program can also change the node or the input.
//
//   vsa::Scene scene;
//   vsa::Node sun = scene.addNode("lamp", "sun");
//   sun.set("power", 2.5).orThrow();
//   vsa::Status status = sun.set("color", vsa::rgba(1, 0.5, 0.25));
//
// Every function that changes something returns a Status or an Added, and throws nothing. A
// function that fails changes nothing, except after OutOfMemory: an input may then have lost its
// value or have another type, and the header of a scene may have lost comments. A function of a
// missing node or input fails, so a program can chain calls without checks. A function also fails
// if no text can represent the result of the change: see EditError. There is one exception: an
// array without elements (see Arrays below).
//
// If the input or member exists already, add() returns it unchanged. set() replaces the value. If
// the new value has another type, set() also replaces the type. There are three exceptions. If the
// node type declares another type for the input, set() fails with DeclaredType. If it declares that
// the input accepts links only, set() fails with TakesNoValue. If the elements of the array have
// another type, set() of an element fails with OtherElementType. The other functions that change
// the type of an input follow the same rules, except that an input for links accepts refer() if its
// declared type is Null or Node.
//
// Views and ranges stay usable after a change. If an input is removed, the memory of its values is
// freed at once, or used for later values of the scene. The object itself (48 bytes on 64-bit
// systems) and its name are freed with the scene. A removed node keeps its inputs and their values
// until the scene is destroyed.
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

/// The Node or Input that was added. If the function failed, this view is missing, and `status`
/// contains the reason.
template <class Handle>
struct [[nodiscard]] Added : Handle {
  // The constructors are implicit, so that a function can return a view if it succeeds, and a
  // Status or an EditError if it fails.
  Added(Handle handle) noexcept : Handle(handle) {}
  Added(Status refused) noexcept : status(refused) {}
  Added(EditError refused) noexcept : status(refused) {}
  /// Whether the function succeeded, and the reason if it failed.
  Status status;
};

namespace detail {

// The element type of one number in T: Float for both float and std::array<float, 3>. Null if T is
// neither a number nor a std::array of numbers.
template <class T>
struct NumberOf {
  static constexpr ElementType TYPE = componentTypeOf<T>();
};
template <class T, std::size_t N>
struct NumberOf<std::array<T, N>> : NumberOf<T> {};

// Whether objects of the C++ type Element can be the contents of a buffer with elements of `type`.
// An Element is a number, a std::array of numbers, or a struct of the size of a buffer element.
template <class Element>
bool fitsBuffer(ElementType type) noexcept {
  constexpr ElementType NUMBER = NumberOf<Element>::TYPE;
  return NUMBER == ElementType::Null ? sizeof(Element) == zn::korvo_sdk::elementBytes(type)
                                     : NUMBER == zn::korvo_sdk::componentType(type);
}

}  // namespace detail

/// A view of an input, an element or a member through which it can be changed.
class Input : public InputView {
 public:
  /// A missing input.
  Input() = default;
  /// The view of `input`. A null pointer gives a missing view.
  explicit Input(zn::korvo_sdk::Input* input) noexcept : InputView(input) {}

  /// The element at index `element`; missing if there is none.
  Input operator[](std::uint64_t element) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->element(element) : nullptr);
  }
  /// The member with this name; missing if there is none.
  Input operator[](TextParameter member) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->memberNamed(member) : nullptr);
  }

  // Values. A new value replaces the old value and the elements and members of the input. It does
  // not change the connection of the input.

  /// Sets the value. Fails with PlusInfinity, NotANumber or NulCharacter if no text can represent
  /// the value.
  VSA_API Status set(const Value& value) const noexcept;
  /// Sets the value to a buffer with a copy of `bytes`. The number of bytes must be a multiple of
  /// the element size. Fails with BadBufferType, BufferSize or NotANumber if no text can represent
  /// the buffer.
  VSA_API Status setBufferBytes(ElementType type, std::span<const std::byte> bytes) const noexcept;
  /// Sets the value to a buffer with a copy of `elements`. The range contains numbers
  /// (`std::vector<float>`), std::arrays of numbers, or structs with the size and layout of one
  /// buffer element. Fails with BufferSize if `type` has numbers of another type, if the structs
  /// have another size than an element, or if the numbers do not fill whole elements.
  template <std::ranges::contiguous_range Range>
  requires std::is_trivially_copyable_v<std::ranges::range_value_t<Range>> Status
  setBuffer(ElementType type, const Range& elements)
  const noexcept {
    if (!detail::fitsBuffer<std::ranges::range_value_t<Range>>(type)) return EditError::BufferSize;
    return setBufferBytes(type, std::as_bytes(std::span(elements)));
  }
  /// Sets the value to a buffer of `count` elements without copying `memory`. The memory must have
  /// room for at least `count` elements. The input takes ownership of it. If the function fails, it
  /// frees the memory. It fails with BufferSize if `memory` is null and the count is not 0, and if
  /// the number of bytes overflows. The other errors are those of setBufferBytes.
  VSA_API Status setBuffer(ElementType type, std::uint64_t count,
                           BufferMemory memory) const noexcept;
  /// Removes the value. The type of the input is then Null. An input that the node type declares is
  /// an exception: the function fails with TakesNoValue if it accepts links only, and with
  /// DeclaredType if its type is not Null. The latter includes an input that is declared with the
  /// type Null and has become a reference or an object. For an element of an array with an element
  /// type, the function fails with OtherElementType.
  VSA_API Status clear() const noexcept;

  // Links. The functions with a node fail with Missing if the node is missing, with Removed if it
  // was removed, and with OtherScene if it belongs to another scene.

  /// Makes the input a reference to the node. The reference replaces the value.
  VSA_API Status refer(NodeView node) const noexcept;
  /// Makes the input a reference to no node, like `null` in a text.
  VSA_API Status referToNone() const noexcept;
  /// Connects the input to the output `output` of the node. The connection replaces an earlier one.
  /// The value of the input stays. Fails with BadName, FormerName or NotDeclared if the node cannot
  /// have such an output.
  VSA_API Status connect(NodeView node, TextParameter output) const noexcept;
  /// Removes the connection. Does nothing if the input has none.
  VSA_API Status disconnect() const noexcept;

  // Arrays. All elements of an array have its element type. If the element type is Null, the
  // elements can only have links; an element with a reference has the type Node. A text can
  // represent an array without elements only if its element type is Null (the reader then logs an
  // error), or if the node type declares the array with this element type.

  /// Makes the input an array of `elementType`. Removes all elements that it had before. Fails with
  /// BadElementType for Node and for a number that is no type, and with DeclaredType if the node
  /// type declares the array with another element type.
  VSA_API Status makeArray(ValueType elementType) const noexcept;
  /// Appends an element with the zero value of its type. If the element type is Null, the element
  /// has no value. Fails with BadBufferType if the elements are buffers: use appendBuffer for them.
  VSA_API Added<Input> append() const noexcept;
  /// Appends an element with this value.
  VSA_API Status append(const Value& value) const noexcept;
  /// Appends a buffer to an array of buffers. The parameters are those of setBufferBytes.
  VSA_API Status appendBufferBytes(ElementType type,
                                   std::span<const std::byte> bytes) const noexcept;
  /// Appends a buffer to an array of buffers. The parameters are those of setBuffer.
  template <std::ranges::contiguous_range Range>
  requires std::is_trivially_copyable_v<std::ranges::range_value_t<Range>> Status
  appendBuffer(ElementType type, const Range& elements)
  const noexcept {
    if (!detail::fitsBuffer<std::ranges::range_value_t<Range>>(type)) return EditError::BufferSize;
    return appendBufferBytes(type, std::as_bytes(std::span(elements)));
  }
  VSA_API Status appendBuffer(ElementType type, std::uint64_t count,
                              BufferMemory memory) const noexcept;
  /// Changes the number of elements to `count`. Removes elements at the end, or appends elements as
  /// append() does. If it fails, the number does not change.
  VSA_API Status resize(std::uint64_t count) const noexcept;

  // Objects.

  /// Makes the input an object. Removes all members that it had before. Fails with DeclaredType if
  /// the type of the node declares the input with the type Null. Such an input is an object as long
  /// as it has members: see `add` and `remove`.
  VSA_API Status makeObject() const noexcept;
  /// Returns the member with this name. If there is none, adds a member without a value. An input
  /// of type Null first becomes an object. Fails with NotAnObject if the input has any other type.
  VSA_API Added<Input> add(TextParameter member) const noexcept;
  /// Sets the value of the member with this name. If there is none, adds the member.
  VSA_API Status set(TextParameter member, const Value& value) const noexcept;
  /// Removes the member with this name. Fails with Missing if there is none. An input that is
  /// declared with the type Null has no value after its last member was removed.
  VSA_API Status remove(TextParameter member) const noexcept;
};

/// A view of a node through which the node can be changed.
class Node : public NodeView {
 public:
  /// A missing node.
  Node() = default;
  /// The view of `node`. A null pointer gives a missing view.
  explicit Node(zn::korvo_sdk::Node* node) noexcept : NodeView(node) {}

  /// The input with this name; missing if there is none.
  Input operator[](TextParameter input) const noexcept {
    return Input(mutablePlain() != nullptr ? mutablePlain()->inputNamed(input) : nullptr);
  }
  /// Returns the input with this name. If there is none, adds an input without a value. In a
  /// written text, such an input has the statement `|= null` until it gets a value or a link. If
  /// the type of the node is declared, the new input has the declared type and its zero value.
  /// Fails with NotDeclared if the type has no such input.
  VSA_API Added<Input> add(TextParameter input) const noexcept;
  /// Sets the value of the input with this name. If there is none, adds the input.
  VSA_API Status set(TextParameter input, const Value& value) const noexcept;
  /// Removes the input with this name. Fails with Missing if there is none.
  VSA_API Status remove(TextParameter input) const noexcept;
};

}  // namespace vsa
