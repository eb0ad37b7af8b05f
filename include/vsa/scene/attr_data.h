// AttrData: the value record that is handed to an input.
#pragma once

#include <cstdint>
#include <type_traits>

#include <vsa/foundation/math_types.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

/// The payload of a buffer value. A plain value: it owns nothing, see AttrData.
struct BufferValue {
  unsigned char* memory;  ///< `bytes` bytes from malloc or calloc; null for a count of 0.
  std::uint64_t count;    ///< Elements: as many as the text declares, written or not.
  std::uint64_t bytes;    ///< Count times the element's bytes; never overflows.
  DataType type;          ///< Of the elements.
  std::int64_t reserved;  ///< 0.
};

/// A type and the payload that goes with it. A plain value: copying it copies the pointers of a
/// string or a buffer, not what they point to. Whoever assigns it hands that memory over, to be
/// freed with `free` by the input that took it.
struct AttrData {
  AttrType type = AttrType::Null;
  /// The AttrType of an array's elements, or the DataType of a buffer's; 0 for every other type.
  std::int32_t elementType = 0;

  /// The member that `type` names is the one to read. Null, Node, Array and Object have none.
  union Payload {
    bool boolean;
    std::int64_t integer;  ///< Int; UInt as the same 64 bits.
    double real;
    char* string;  ///< NUL-terminated, from malloc; null stands for the empty string.
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
    double components[16];  ///< Of every tuple and matrix, in storage order. A new record's are 0.
  };
  Payload payload{.components = {}};
};

static_assert(std::is_trivially_copyable_v<AttrData>);

}  // namespace zn::korvo_sdk
