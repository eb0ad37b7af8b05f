// BufferView and TypedBuffer: the elements of a buffer, without a copy.
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

/// Why a TypedBuffer has no elements.
enum class BufferProblem {
  None,                ///< There is a buffer of that type; it may have no elements.
  Missing,             ///< The input does not exist.
  NotABuffer,          ///< The input has another type.
  OtherComponentType,  ///< The numbers of the buffer have another type, such as double for float.
  OtherComponentCount  ///< An element of the buffer has more or fewer numbers, such as 4 for 3.
};

namespace detail {

// The reason that TypedBuffer::message describes.
VSA_API std::string describe(BufferProblem problem, ElementType found, ElementType component,
                             std::size_t count);

}  // namespace detail

/// The elements of a buffer as `T`, or for N > 1 as `std::array<T, N>`: a contiguous range. Valid
/// until the input gets another value. If the buffer has elements of another type, the range is
/// empty, and problem() returns the reason.
template <class T, std::size_t N = 1>
requires BufferElement<T, N>
class TypedBuffer {
 public:
  using Element = std::conditional_t<N == 1, T, std::array<T, N>>;
  static_assert(sizeof(Element) == N * sizeof(T));

  TypedBuffer() = default;
  TypedBuffer(const void* memory, std::uint64_t count) noexcept
      : data_(static_cast<const Element*>(memory)), size_(static_cast<std::size_t>(count)) {
    problem_ = BufferProblem::None;
  }
  TypedBuffer(BufferProblem problem, ElementType found) noexcept
      : problem_(problem), found_(found) {}

  const Element* data() const noexcept { return data_; }
  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  const Element* begin() const noexcept { return data_; }
  const Element* end() const noexcept { return data_ + size_; }
  /// `index` must be less than `size()`; this is not checked.
  const Element& operator[](std::size_t index) const noexcept { return data_[index]; }
  std::span<const Element> span() const noexcept { return {data_, size_}; }
  operator std::span<const Element>() const noexcept { return span(); }  // implicit conversion
  /// The `N * size()` numbers of all elements, one after another.
  std::span<const T> numbers() const noexcept {
    return {reinterpret_cast<const T*>(data_), N * size_};
  }

  /// Why there are no elements. None if there is a buffer of that type.
  BufferProblem problem() const noexcept { return problem_; }
  /// The problem as a message for people: "a buffer of Vec3d, not of 3 Float". Empty for None.
  std::string message() const {
    return detail::describe(problem_, found_, detail::componentTypeOf<T>(), N);
  }

 private:
  const Element* data_ = nullptr;
  std::size_t size_ = 0;
  BufferProblem problem_ = BufferProblem::Missing;
  ElementType found_ = ElementType::Null;
};

/// The elements of a buffer of any type. Valid until the input gets another value.
class BufferView {
 public:
  BufferView() = default;
  /// The view of an input that has no buffer.
  explicit BufferView(BufferProblem problem) noexcept : problem_(problem) {}
  explicit BufferView(const zn::korvo_sdk::BufferValue& value) noexcept
      : value_(value), problem_(BufferProblem::None) {}

  /// Why there is no buffer: Missing or NotABuffer. None if there is one.
  BufferProblem problem() const noexcept { return problem_; }
  /// The type of the elements. Null if there is no buffer or its type was never set.
  ElementType elementType() const noexcept { return value_.type; }
  /// The number of elements.
  std::uint64_t count() const noexcept { return value_.count; }
  /// The memory of all elements; see ElementType for the layout of one.
  std::span<const std::byte> bytes() const noexcept {
    return {reinterpret_cast<const std::byte*>(value_.memory),
            static_cast<std::size_t>(value_.bytes)};
  }
  /// The elements, each with N numbers of type T: `as<float, 3>()` of a buffer of Vec3f, Pos3f,
  /// Rgbf, Hsvf or Hslf, `as<std::uint8_t, 4>()` of a buffer of Rgba8. std::byte can be used for
  /// bytes.
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
