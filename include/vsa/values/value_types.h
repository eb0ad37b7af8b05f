// Names in namespace vsa for the types of values and of buffer elements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>

namespace vsa {

/// The type of the value of an input: Null, Bool, Int, UInt, Real, Vec2 to Mat4, String, Node,
/// Buffer, Array or Object.
using ValueType = zn::korvo_sdk::AttrType;

/// The type of the elements of a buffer: Byte, Int32, Float, Vec3f, Rgba8 and so on.
using ElementType = zn::korvo_sdk::DataType;

/// Returns the name of a type, such as "Real" or "Vec3f". Returns "<unknown>" for a number that is
/// no type. The name is valid until the process ends.
inline std::string_view typeName(ValueType type) noexcept {
  return zn::korvo_sdk::attrTypeName(type);
}
inline std::string_view typeName(ElementType type) noexcept {
  return zn::korvo_sdk::dataTypeName(type);
}

namespace detail {

// Returns the element type of one number of type T, or Null if buffers cannot contain such numbers.
template <class T>
constexpr ElementType componentTypeOf() noexcept {
  using Type = std::remove_cv_t<T>;
  if constexpr (std::is_same_v<Type, float>) return ElementType::Float;
  if constexpr (std::is_same_v<Type, double>) return ElementType::Double;
  if constexpr (std::is_same_v<Type, std::byte>) return ElementType::Byte;
  if constexpr (std::is_same_v<Type, bool>) return ElementType::Bool;
  if constexpr (std::is_integral_v<Type> && !std::is_same_v<Type, bool>) {
    constexpr bool isSigned = std::is_signed_v<Type>;
    if constexpr (sizeof(Type) == 1) return isSigned ? ElementType::Char : ElementType::Byte;
    if constexpr (sizeof(Type) == 2) return isSigned ? ElementType::Int16 : ElementType::UInt16;
    if constexpr (sizeof(Type) == 4) return isSigned ? ElementType::Int32 : ElementType::UInt32;
    if constexpr (sizeof(Type) == 8) return isSigned ? ElementType::Int64 : ElementType::UInt64;
  }
  return ElementType::Null;
}

}  // namespace detail

/// Whether there are buffers of numbers of type T, and N is not 0. The concept does not check
/// whether there is an ElementType with N such numbers.
template <class T, std::size_t N = 1>
concept BufferElement = N >
0 && detail::componentTypeOf<T>() != ElementType::Null;

}  // namespace vsa
