// AttrType: the types of inputs and of their values.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// The type of an input or of a value. As a parameter of a look-up, `Null` means any type. As the
/// element type of an array, it means that the type is not set. The components of all tuples are of
/// type double.
enum class AttrType : std::int32_t {
  Null,    ///< No value, for example if the input only has a connection.
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
  Node,    ///< A reference to a node of the scene, or to no node.
  Buffer,  ///< Elements of one DataType in one block of memory.
  Array,   ///< Inputs of one AttrType; an index selects one.
  Object,  ///< Inputs of any types; a name selects one.
};

/// The number of enumerators of AttrType.
inline constexpr int ATTR_TYPE_COUNT = 19;

/// Returns the display name of a type: "Null" to "Object". Returns "<unknown>" for any other
/// number. The result is never null. The name is valid until the process ends.
VSA_API const char* attrTypeName(AttrType type) noexcept;

/// Returns the number of components of a vector, position, quaternion, colour or matrix: 2 to 16.
/// Returns 0 for every other type.
VSA_API unsigned componentCount(AttrType type) noexcept;

}  // namespace zn::korvo_sdk
