// DataType: the element types of buffers.
#pragma once

#include <cstddef>
#include <cstdint>

#include <vsa/foundation/api.h>

namespace zn::korvo_sdk {

/// The type of the elements of a buffer. `Null` means that the type is not set. Elements are
/// contiguous in memory, and their components have the byte order of the machine. The order of
/// components is x, y, z, w for vectors, positions and quaternions. Matrices are stored row by row.
/// For colours except ColorRef, the name of the type shows the order. The last character of the
/// name of a type with several components is the type of a component. It is f for float, d for
/// double and 8 for a byte. It is i for a signed and u for an unsigned 32-bit integer. ColorRef is
/// an exception: it has four bytes. A text cannot contain buffers of Bool, Ptr, Xform, Aabb and
/// Obb, but a host may use these types.
enum class DataType : std::int32_t {
  Null,
  Bool,
  Char,
  Byte,
  Int16,
  Int32,
  Int64,
  UInt16,
  UInt32,
  UInt64,
  Float,
  Double,
  Ptr,
  Vec2f,
  Vec2d,
  Vec2i,
  Vec2u,
  Vec3f,
  Vec3d,
  Vec3i,
  Vec3u,
  Vec4f,
  Vec4d,
  Vec4i,
  Vec4u,
  Pos2f,
  Pos2d,
  Pos2i,
  Pos3f,
  Pos3d,
  Pos3i,
  Quatf,
  Quatd,
  Rgbf,
  Rgbd,
  Rgb8,
  Rgbaf,
  Rgbad,
  Rgba8,
  Mat3f,
  Mat3d,
  Mat3i,
  Mat4f,
  Mat4d,
  Mat4i,
  Xformf,
  Xformd,
  Xformi,
  Aabbf,
  Aabbd,
  Aabbi,
  Obbf,
  Obbd,
  Obbi,
  Hsvf,
  Hsvd,
  Hslf,
  Hsld,
  Argb8,
  ColorRef,
};

/// The number of enumerators of DataType.
inline constexpr int DATA_TYPE_COUNT = 60;

/// Returns the display name of a type: "Null" to "ColorRef". Returns "<unknown>" for any other
/// number. The result is never null. The name is valid until the process ends.
VSA_API const char* dataTypeName(DataType type) noexcept;

/// Returns the type of one component of an element. For `Vec3f` it is `Float`. For single numbers,
/// Bool and Ptr it is the type itself. For `Null` and unknown numbers it is `Null`.
VSA_API DataType componentType(DataType type) noexcept;

/// Returns the number of components of an element. For `Vec3f` it is 3. For single numbers, Bool
/// and Ptr it is 1. For `Null` and unknown numbers it is 0.
VSA_API unsigned componentCount(DataType type) noexcept;

/// Returns the bytes of one component of an element; 0 for `Null` and unknown numbers.
VSA_API std::size_t componentBytes(DataType type) noexcept;

/// Returns the bytes of one element; 0 for `Null` and unknown numbers.
VSA_API std::size_t elementBytes(DataType type) noexcept;

/// Returns whether a text can contain buffers of this type. The keyword of such a buffer is the
/// display name of the type in lower case. The result is false for Null, Bool, Ptr, Xform, Aabb,
/// Obb and unknown numbers.
VSA_API bool isBufferElement(DataType type) noexcept;

/// Calls `visit(T())`, where T is the C++ type of `component`: an integer of 8 to 64 bits, float or
/// double. For Bool and Byte, T is unsigned char. Returns whether it has called `visit`: it does
/// not for Null, Ptr and types with several components.
template <class Visit>
bool visitComponent(DataType component, const Visit& visit) {
  switch (component) {
    case DataType::Char:
      visit(static_cast<signed char>(0));
      return true;
    case DataType::Bool:
    case DataType::Byte:
      visit(static_cast<unsigned char>(0));
      return true;
    case DataType::Int16:
      visit(short{0});
      return true;
    case DataType::Int32:
      visit(0);
      return true;
    case DataType::Int64:
      visit(0LL);
      return true;
    case DataType::UInt16:
      visit(static_cast<unsigned short>(0));
      return true;
    case DataType::UInt32:
      visit(0U);
      return true;
    case DataType::UInt64:
      visit(0ULL);
      return true;
    case DataType::Float:
      visit(0.0F);
      return true;
    case DataType::Double:
      visit(0.0);
      return true;
    default:
      return false;
  }
}

}  // namespace zn::korvo_sdk
