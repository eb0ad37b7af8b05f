// AttrData: a value that is assigned to an input.
#pragma once

#include <cstdint>
#include <type_traits>

#include <vsa/foundation/math_types.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

/// The payload of a buffer value. A plain value: it owns nothing, see AttrData.
struct BufferValue {
  unsigned char* memory;  ///< `bytes` bytes from malloc or calloc; null if count is 0.
  std::uint64_t count;    ///< The declared number of elements.
  std::uint64_t bytes;    ///< The count times the bytes of an element; never overflows.
  DataType type;          ///< The type of the elements.
  std::int64_t reserved;  ///< Always 0.
};

/// A type and the payload of that type. A plain value: a copy shares the memory of a string or a
/// buffer. The input that a value is assigned to takes ownership of that memory and frees it with
/// `free`.
struct AttrData {
  AttrType type = AttrType::Null;
  /// The AttrType of an array's elements or the DataType of a buffer's elements; 0 for every other
  /// type.
  std::int32_t elementType = 0;

  /// `type` selects the member. Null, Node, Array and Object have no payload.
  union Payload {
    bool boolean;
    std::int64_t integer;  ///< Int; for UInt the same 64 bits.
    double real;
    char* string;  ///< NUL-terminated, from malloc; null is the empty string.
    BufferValue buffer;
    math::VecT<2, double> vec2;
    math::VecT<3, double> vec3;
    math::VecT<4, double> vec4;
    math::PosT<2, double> pos2;
    math::PosT<3, double> pos3;
    math::QuatT<double> quat;
    math::RgbaT<double> rgba;
    math::MatT<3, double> mat3;
    math::MatT<4, double> mat4;
    /// The components of any tuple or matrix, in storage order. All are 0 in a new record.
    double components[16];
  };
  Payload payload{.components = {}};
};

static_assert(std::is_trivially_copyable_v<AttrData>);

}  // namespace zn::korvo_sdk
