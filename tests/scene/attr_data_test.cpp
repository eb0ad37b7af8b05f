// The value record: every tuple and matrix lies over `components`, and has as many of them.
#include "scene/attr_data.h"

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

TEST(AttrData, ANewOneIsNullAndAllZero) {
  AttrData data;
  EXPECT_EQ(data.type, AttrType::Null);
  EXPECT_EQ(data.elementType, 0);
  for (const double component : data.payload.components) EXPECT_EQ(component, 0.0);
}

TEST(AttrData, AClearedPayloadIsAsNew) {
  AttrData data;
  for (double& component : data.payload.components) component = 1;
  data.payload.clear();
  for (const double component : data.payload.components) EXPECT_EQ(component, 0.0);
  EXPECT_EQ(data.payload.string, nullptr);
  EXPECT_EQ(data.payload.integer, 0);
  EXPECT_FALSE(data.payload.boolean);
  EXPECT_EQ(data.payload.buffer.memory, nullptr);
  EXPECT_EQ(data.payload.buffer.count, 0U);
  EXPECT_EQ(data.payload.buffer.bytes, 0U);
  EXPECT_EQ(data.payload.buffer.type, DataType::Null);
  EXPECT_EQ(data.payload.buffer.reserved, 0);
}

}  // namespace
}  // namespace zn::korvo_sdk
