// AttrType: the types of inputs and of the values given to them.
#pragma once

#include <cstdint>

#include "foundation/api.h"
#include "foundation/string.h"

namespace zn::korvo_sdk {

/// `Null` doubles as "any type" in look-ups and as "not yet set" for an array's elements.
enum class AttrType : std::int32_t {
  Null,
  Bool,
  Int,
  UInt,
  Real,
  Vec2,
  Vec3,
  Vec4,
  Pos2,
  Pos3,
  Quat,
  Rgba,
  Mat3,
  Mat4,
  String,
  Node,
  Buffer,
  Array,
  Object,
};

inline constexpr int ATTR_TYPE_COUNT = 19;

/// The display name of a type: "Null" to "Object", "<unknown>" for any other value.
VSA_API const char* attrTypeName(AttrType type) noexcept;

/// How many reals a value of the type consists of: 2 to 16 for vectors, positions, quaternions,
/// colours and matrices, 0 for every other type.
VSA_API unsigned componentCount(AttrType type) noexcept;

}  // namespace zn::korvo_sdk
