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

/// Returns a keyword of four characters as a number, in lower case. The comparison of numbers saves
/// 4 % of the time of the benchmark mixed.
constexpr std::uint32_t packed(const char* keyword) {
  std::uint32_t bytes = 0;
  for (int i = 0; i < 4; ++i) {
    bytes = bytes << 8 | static_cast<unsigned char>(zn::toLowerCase(keyword[i]));
  }
  return bytes;
}

struct TupleKeyword {
  std::uint32_t keyword;
  AttrType type;
};

inline constexpr TupleKeyword TUPLES[] = {
    {packed("vec2"), AttrType::Vec2}, {packed("vec3"), AttrType::Vec3},
    {packed("vec4"), AttrType::Vec4}, {packed("pos2"), AttrType::Pos2},
    {packed("pos3"), AttrType::Pos3}, {packed("quat"), AttrType::Quat},
    {packed("mat3"), AttrType::Mat3}, {packed("mat4"), AttrType::Mat4},
    {packed("rgba"), AttrType::Rgba},
};

}  // namespace keyword_detail

/// Returns the tuple type of a keyword in any letter case. Returns Null for any other word.
inline AttrType tupleTypeOf(std::string_view keyword) {
  if (keyword.size() != 4) return AttrType::Null;
  const std::uint32_t word = keyword_detail::packed(keyword.data());
  for (const auto& [packed, type] : keyword_detail::TUPLES) {
    if (packed == word) return type;
  }
  return AttrType::Null;
}

/// Returns the element type of a buffer keyword in any letter case. Returns Null for any other
/// word.
DataType bufferTypeOf(const String& keyword);

}  // namespace zn::korvo_sdk::impl
