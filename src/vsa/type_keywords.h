// The keywords of typed values, such as `vec3` for a tuple and `vec3f` for a buffer. Internal.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>
#include "foundation/text/letter_case.h"

namespace zn::korvo_sdk::impl {

namespace keyword_detail {

constexpr std::uint32_t packed(const char* keyword) {
  std::uint32_t bytes = 0;
  for (int i = 0; i < 4; ++i) {
    bytes = bytes << 8 | static_cast<unsigned char>(zn::toLowerCase(keyword[i]));
  }
  return bytes;
}

}  // namespace keyword_detail

/// Returns the tuple type of a keyword in any letter case. Returns Null for any other word.
inline AttrType tupleTypeOf(std::string_view keyword) {
  using keyword_detail::packed;
  if (keyword.size() != 4) return AttrType::Null;
  switch (packed(keyword.data())) {
    case packed("vec2"):
      return AttrType::Vec2;
    case packed("vec3"):
      return AttrType::Vec3;
    case packed("vec4"):
      return AttrType::Vec4;
    case packed("pos2"):
      return AttrType::Pos2;
    case packed("pos3"):
      return AttrType::Pos3;
    case packed("quat"):
      return AttrType::Quat;
    case packed("mat3"):
      return AttrType::Mat3;
    case packed("mat4"):
      return AttrType::Mat4;
    case packed("rgba"):
      return AttrType::Rgba;
    default:
      return AttrType::Null;
  }
}

/// Returns the element type of a buffer keyword in any letter case. Returns Null for any other
/// word.
DataType bufferTypeOf(const String& keyword);

}  // namespace zn::korvo_sdk::impl
