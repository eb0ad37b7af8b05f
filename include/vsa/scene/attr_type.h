// AttrType: the types of inputs and of their values.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// `Null` also means "any type" in look-ups and "not set" for the element type of an array. All
/// tuples and matrices have components of type double.
enum class AttrType : std::int32_t {
  Null,    ///< No value yet, for example if there is only a connection.
  Bool,    ///< true or false.
  Int,     ///< 64 bits, signed.
  UInt,    ///< 64 bits, unsigned.
  Real,    ///< A double.
  Vec2,    ///< A vector: x, y.
  Vec3,    ///< A vector: x, y, z.
  Vec4,    ///< A vector: x, y, z, w.
  Pos2,    ///< A position: x, y.
  Pos3,    ///< A position: x, y, z.
  Quat,    ///< A rotation: x, y, z, w.
  Rgba,    ///< A colour: red, green, blue, alpha.
  Mat3,    ///< A 3 by 3 matrix, row by row.
  Mat4,    ///< A 4 by 4 matrix, row by row.
  String,  ///< Characters without NUL.
  Node,    ///< A reference to a node of the scene, or to none.
  Buffer,  ///< A block of elements of one DataType.
  Array,   ///< Inputs of one AttrType, accessed by index.
  Object,  ///< Inputs of any type, accessed by name.
};

/// The number of types.
inline constexpr int ATTR_TYPE_COUNT = 19;

/// The display name of a type, "Null" to "Object"; "<unknown>" for any other value. Never null,
/// valid until the process ends.
VSA_API const char* attrTypeName(AttrType type) noexcept;

/// The number of components of a vector, position, quaternion, colour or matrix: 2 to 16. 0 for
/// every other type.
VSA_API unsigned componentCount(AttrType type) noexcept;

}  // namespace zn::korvo_sdk
