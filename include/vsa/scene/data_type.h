// DataType: the element types of buffers.
#pragma once

#include <cstddef>
#include <cstdint>

#include <vsa/foundation/api.h>

namespace zn::korvo_sdk {

/// `Null` is "not yet set". Elements lie one after another in memory, their components in order,
/// in the byte order of the machine; vectors, positions and quaternions x, y, z, w, matrices row by
/// row, colours as their names say. The last letter is the component: f float, d double, i and u 32
/// bits signed and unsigned, 8 a byte. Texts have no buffers of Bool, Ptr, Xform, Aabb and Obb:
/// those are for hosts.
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

/// How many types there are.
inline constexpr int DATA_TYPE_COUNT = 60;

/// The display name of a type: "Null" to "ColorRef", "<unknown>" for any other value. Never null,
/// valid until the process ends.
VSA_API const char* dataTypeName(DataType type) noexcept;

/// The type of one number of an element: `Float` for `Vec3f`, the type itself for single numbers,
/// `Null` for `Null` and for unknown values.
VSA_API DataType componentType(DataType type) noexcept;

/// Numbers in one element: 3 for `Vec3f`, 1 for single numbers, 0 for `Null` and unknown values.
VSA_API unsigned componentCount(DataType type) noexcept;

/// Bytes of one number of an element; 0 for `Null` and unknown values.
VSA_API std::size_t componentBytes(DataType type) noexcept;

/// Bytes of one element; 0 for `Null` and unknown values.
VSA_API std::size_t elementBytes(DataType type) noexcept;

/// Whether a text may have buffers of the type; the keyword is the display name in lower case.
/// False for Null, Bool, Ptr, Xform, Aabb and Obb, which are for hosts, and for unknown values.
VSA_API bool isBufferElement(DataType type) noexcept;

/// Calls `visit(T())` with the C++ type T of one component, as `componentType` returns it: an
/// integer of 8 to 64 bits (Bool and Byte: unsigned char), float or double. Returns false without a
/// call for every other type.
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
