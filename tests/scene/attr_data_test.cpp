// Tests of the value record: the sizes of its tuples and matrices, and its default values.
#include <vsa/scene/attr_data.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

namespace zn::korvo_sdk {
namespace {

constexpr std::size_t REAL = sizeof(double);

TEST(AttrData, TuplesHaveTheirComponentsAndNoMore) {
  using Payload = AttrData::Payload;
  EXPECT_EQ(sizeof(Payload::vec2), 2 * REAL);
  EXPECT_EQ(sizeof(Payload::vec3), 3 * REAL);
  EXPECT_EQ(sizeof(Payload::vec4), 4 * REAL);
  EXPECT_EQ(sizeof(Payload::pos2), 2 * REAL);
  EXPECT_EQ(sizeof(Payload::pos3), 3 * REAL);
  EXPECT_EQ(sizeof(Payload::quat), 4 * REAL);
  EXPECT_EQ(sizeof(Payload::rgba), 4 * REAL);
  EXPECT_EQ(sizeof(Payload::mat3), 9 * REAL);
  EXPECT_EQ(sizeof(Payload::mat4), 16 * REAL);
  EXPECT_EQ(sizeof(Payload::components), 16 * REAL);
  EXPECT_EQ(sizeof(Payload), 16 * REAL);
}

TEST(AttrData, DefaultIsNullAndZero) {
  AttrData data;
  EXPECT_EQ(data.type, AttrType::Null);
  EXPECT_EQ(data.elementType, 0);
  for (const double component : data.payload.components) EXPECT_EQ(component, 0.0);
}

TEST(AttrData, HasDesignatedInitializers) {
  const AttrData data{.type = AttrType::Int, .payload = {.integer = 5}};
  EXPECT_EQ(data.type, AttrType::Int);
  EXPECT_EQ(data.elementType, 0);
  EXPECT_EQ(data.payload.integer, 5);
}

}  // namespace
}  // namespace zn::korvo_sdk
