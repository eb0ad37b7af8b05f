// AttrType: the types of inputs and of the values given to them.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// `Null` doubles as "any type" in look-ups and as "not yet set" for an array's elements. All
/// tuples and matrices are of doubles.
enum class AttrType : std::int32_t {
  Null,    ///< No value yet: what only a link has named.
  Bool,    ///< true or false.
  Int,     ///< 64 bits, signed.
  UInt,    ///< 64 bits, unsigned.
  Real,    ///< A double.
  Vec2,    ///< A vector: x, y.
  Vec3,    ///< x, y, z.
  Vec4,    ///< x, y, z, w.
  Pos2,    ///< A position: x, y.
  Pos3,    ///< x, y, z.
  Quat,    ///< A rotation: x, y, z, w.
  Rgba,    ///< A colour: red, green, blue, alpha.
  Mat3,    ///< 3 by 3, row by row.
  Mat4,    ///< 4 by 4, row by row.
  String,  ///< Characters without a NUL among them.
  Node,    ///< A node of the scene, or none.
  Buffer,  ///< A block of elements of one DataType.
  Array,   ///< Inputs of one AttrType, by index.
  Object,  ///< Inputs of any type, by name.
};

/// How many types there are.
inline constexpr int ATTR_TYPE_COUNT = 19;

/// The display name of a type: "Null" to "Object", "<unknown>" for any other value. Never null,
/// valid until the process ends.
VSA_API const char* attrTypeName(AttrType type) noexcept;

/// How many reals a value of the type consists of: 2 to 16 for vectors, positions, quaternions,
/// colours and matrices, 0 for every other type.
VSA_API unsigned componentCount(AttrType type) noexcept;

}  // namespace zn::korvo_sdk
