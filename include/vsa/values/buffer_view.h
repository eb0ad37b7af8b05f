// BufferView and TypedBuffer: give access to the elements of a buffer without copying them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ranges>
#include <span>
#include <string>
#include <type_traits>

#include <vsa/foundation/api.h>
#include <vsa/scene/attr_data.h>
#include <vsa/values/value_types.h>

namespace vsa {

/// The reason why a TypedBuffer has no elements.
enum class BufferProblem {
  None,                ///< There is a buffer of this type. It can have 0 elements.
  Missing,             ///< The input does not exist.
  NotABuffer,          ///< The input has another type.
  OtherComponentType,  ///< The numbers have another type, such as double instead of float.
  OtherComponentCount  ///< The elements have more or fewer numbers, such as 4 instead of 3.
};

namespace detail {

// Returns the text of TypedBuffer::message.
VSA_API std::string describe(BufferProblem problem, ElementType found, ElementType component,
                             std::size_t count);

}  // namespace detail

/// The elements of a buffer as a contiguous range. An element is a `T`, or a `std::array<T, N>` if
/// N > 1. The range is valid until the input with the buffer gets another value or is removed, or
/// its scene is destroyed. If the elements of the buffer have another type, the range is empty and
/// problem() returns the reason.
template <class T, std::size_t N = 1>
requires BufferElement<T, N>
class TypedBuffer {
 public:
  /// The type of one element.
  using Element = std::conditional_t<N == 1, T, std::array<T, N>>;
  static_assert(sizeof(Element) == N * sizeof(T));

  /// An empty range for an input that does not exist: problem() returns Missing.
  TypedBuffer() = default;
  /// The `count` elements at `memory`.
  TypedBuffer(const void* memory, std::uint64_t count) noexcept
      : data_(static_cast<const Element*>(memory)), size_(static_cast<std::size_t>(count)) {
    problem_ = BufferProblem::None;
  }
  /// An empty range. `found` is the element type of the buffer.
  TypedBuffer(BufferProblem problem, ElementType found) noexcept
      : problem_(problem), found_(found) {}

  /// The first element. It is null if problem() is not None, and may be null if the buffer has no
  /// elements.
  const Element* data() const noexcept { return data_; }
  /// The number of elements.
  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  const Element* begin() const noexcept { return data_; }
  const Element* end() const noexcept { return data_ + size_; }
  /// The element at `index`, which must be less than `size()`. The function does not check this.
  const Element& operator[](std::size_t index) const noexcept { return data_[index]; }
  std::span<const Element> span() const noexcept { return {data_, size_}; }
  /// The conversion is implicit, so that the range can be passed as a std::span.
  operator std::span<const Element>() const noexcept { return span(); }
  /// The numbers of all elements, one element after another: `N * size()` numbers.
  std::span<const T> numbers() const noexcept {
    return {reinterpret_cast<const T*>(data_), N * size_};
  }

  /// The reason why there are no elements. It is None if there is a buffer of this type.
  BufferProblem problem() const noexcept { return problem_; }
  /// The problem as a message for people, such as "a buffer of Vec3d, not of 3 Float". It is empty
  /// for None.
  std::string message() const {
    return detail::describe(problem_, found_, detail::componentTypeOf<T>(), N);
  }

 private:
  const Element* data_ = nullptr;
  std::size_t size_ = 0;
  BufferProblem problem_ = BufferProblem::Missing;
  ElementType found_ = ElementType::Null;
};

/// The elements of a buffer of any type. They are valid until the input with the buffer gets
/// another value or is removed, or its scene is destroyed.
class BufferView {
 public:
  /// The view of an input that does not exist.
  BufferView() = default;
  /// The view of an input without a buffer. `problem` is the reason.
  explicit BufferView(BufferProblem problem) noexcept : problem_(problem) {}
  /// The view of this buffer.
  explicit BufferView(const zn::korvo_sdk::BufferValue& value) noexcept
      : value_(value), problem_(BufferProblem::None) {}

  /// The reason why there is no buffer: Missing or NotABuffer. It is None if there is a buffer.
  BufferProblem problem() const noexcept { return problem_; }
  /// The type of the elements. It is Null if there is no buffer, or if the type was never set.
  ElementType elementType() const noexcept { return value_.type; }
  /// The number of elements.
  std::uint64_t count() const noexcept { return value_.count; }
  /// The memory of all elements. ElementType describes the layout of an element.
  std::span<const std::byte> bytes() const noexcept {
    return {reinterpret_cast<const std::byte*>(value_.memory),
            static_cast<std::size_t>(value_.bytes)};
  }
  /// The elements, each with N numbers of type T. For example, `as<float, 3>()` is for buffers of
  /// Vec3f, Pos3f, Rgbf, Hsvf and Hslf, and `as<std::uint8_t, 4>()` for buffers of Rgba8. T can be
  /// std::byte for a buffer of bytes.
  template <class T, std::size_t N = 1>
  requires BufferElement<T, N> TypedBuffer<T, N> as()
  const noexcept {
    using Typed = TypedBuffer<T, N>;
    if (problem_ != BufferProblem::None) return Typed(problem_, ElementType::Null);
    if (zn::korvo_sdk::componentType(value_.type) != detail::componentTypeOf<T>()) {
      return Typed(BufferProblem::OtherComponentType, value_.type);
    }
    if (zn::korvo_sdk::componentCount(value_.type) != N) {
      return Typed(BufferProblem::OtherComponentCount, value_.type);
    }
    return Typed(value_.memory, value_.count);
  }

 private:
  zn::korvo_sdk::BufferValue value_{};
  BufferProblem problem_ = BufferProblem::Missing;
};

}  // namespace vsa

template <class T, std::size_t N>
inline constexpr bool std::ranges::enable_view<vsa::TypedBuffer<T, N>> = true;
template <class T, std::size_t N>
inline constexpr bool std::ranges::enable_borrowed_range<vsa::TypedBuffer<T, N>> = true;
