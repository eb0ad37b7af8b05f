// DataType: the element types of buffers.
#pragma once

#include <cstddef>
#include <cstdint>

#include <vsa/foundation/api.h>

namespace zn::korvo_sdk {

/// `Null` means "not set". Elements are contiguous in memory. Their components are in the byte
/// order of the machine. The components of vectors, positions and quaternions are x, y, z, w;
/// matrices are stored row by row; the name of a colour type gives the order of its components. The
/// last letter of a name is the component type: f for float, d for double, i and u for a signed and
/// an unsigned 32-bit integer, 8 for a byte. Texts have no buffers of Bool, Ptr, Xform, Aabb and
/// Obb; hosts may use these types.
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

/// The number of types.
inline constexpr int DATA_TYPE_COUNT = 60;

/// The display name of a type, "Null" to "ColorRef"; "<unknown>" for any other value. Never null,
/// valid until the process ends.
VSA_API const char* dataTypeName(DataType type) noexcept;

/// The type of one component of an element: `Float` for `Vec3f`, the type itself for single
/// numbers, `Null` for `Null` and for unknown values.
VSA_API DataType componentType(DataType type) noexcept;

/// The number of components of an element: 3 for `Vec3f`, 1 for single numbers, 0 for `Null` and
/// unknown values.
VSA_API unsigned componentCount(DataType type) noexcept;

/// The bytes of one component of an element; 0 for `Null` and unknown values.
VSA_API std::size_t componentBytes(DataType type) noexcept;

/// The bytes of one element; 0 for `Null` and unknown values.
VSA_API std::size_t elementBytes(DataType type) noexcept;

/// Whether a text may have buffers of the type. Their keyword is the display name in lower case.
/// False for Null, Bool, Ptr, Xform, Aabb, Obb and unknown values.
VSA_API bool isBufferElement(DataType type) noexcept;

/// Calls `visit(T())` with the C++ type T of a component: an integer of 8 to 64 bits (unsigned char
/// for Bool and Byte), float or double. If there is no such type T, returns false and does not call
/// `visit`.
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
