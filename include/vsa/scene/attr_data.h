// AttrData: a value that is assigned to an input.
#pragma once

#include <cstdint>
#include <type_traits>

#include <vsa/foundation/math_types.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

/// The payload of a buffer value. It is a plain value and does not own the memory: see AttrData.
struct BufferValue {
  unsigned char* memory;  ///< `bytes` bytes from malloc, calloc or realloc; null if `count` is 0.
  std::uint64_t count;    ///< The number of elements; 0 for a skipped literal or one over a limit.
  std::uint64_t bytes;    ///< `count` times the bytes of one element. It never overflows.
  DataType type;          ///< The type of the elements.
  std::int64_t reserved;  ///< Always 0.
};

/// A value: a type and a payload for this type. It is a plain value, so copies share the memory of
/// a string or a buffer. The input to which the value is assigned takes ownership of that memory,
/// and frees it with `free`.
struct AttrData {
  /// The type of the value, which selects the member of `payload`.
  AttrType type = AttrType::Null;
  /// The AttrType of the elements of an array, or the DataType of the elements of a buffer. It is 0
  /// for every other type.
  std::int32_t elementType = 0;

  /// The payload. `type` selects the member. Values of type Null, Node, Array and Object have no
  /// payload.
  union Payload {
    bool boolean;
    std::int64_t integer;  ///< The value of an Int; for a UInt, the same 64 bits.
    double real;
    char* string;  ///< The characters with a NUL, from malloc or realloc; may be null if empty.
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
    /// The components of any tuple, in storage order. A new record has 16 zeros.
    double components[16];
  };
  /// The payload; see Payload.
  Payload payload{.components = {}};
};

static_assert(std::is_trivially_copyable_v<AttrData>);

}  // namespace zn::korvo_sdk
