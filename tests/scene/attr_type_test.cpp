// Tests of each attribute type.
#include <vsa/scene/attr_type.h>

#include <gtest/gtest.h>

namespace zn::korvo_sdk {
namespace {

struct Row {
  AttrType type;
  const char* name;
  unsigned components;
};

constexpr Row ROWS[] = {
    {AttrType::Null, "Null", 0},     {AttrType::Bool, "Bool", 0},
    {AttrType::Int, "Int", 0},       {AttrType::UInt, "UInt", 0},
    {AttrType::Real, "Real", 0},     {AttrType::Vec2, "Vec2", 2},
    {AttrType::Vec3, "Vec3", 3},     {AttrType::Vec4, "Vec4", 4},
    {AttrType::Pos2, "Pos2", 2},     {AttrType::Pos3, "Pos3", 3},
    {AttrType::Quat, "Quat", 4},     {AttrType::Rgba, "Rgba", 4},
    {AttrType::Mat3, "Mat3", 9},     {AttrType::Mat4, "Mat4", 16},
    {AttrType::String, "String", 0}, {AttrType::Node, "Node", 0},
    {AttrType::Buffer, "Buffer", 0}, {AttrType::Array, "Array", 0},
    {AttrType::Object, "Object", 0},
};

TEST(AttrTypes, EveryRow) {
  EXPECT_EQ(sizeof(AttrType), 4U);
  EXPECT_EQ(ATTR_TYPE_COUNT, 19);
  int value = 0;
  for (const Row& row : ROWS) {
    EXPECT_EQ(static_cast<int>(row.type), value++);
    EXPECT_STREQ(attrTypeName(row.type), row.name);
    EXPECT_EQ(componentCount(row.type), row.components) << row.name;
  }
  EXPECT_EQ(value, 19);
}

TEST(AttrTypes, OutOfRange) {
  for (const int value : {19, 20, 1000, -1, -2147483647 - 1}) {
    EXPECT_STREQ(attrTypeName(static_cast<AttrType>(value)), "<unknown>");
    EXPECT_EQ(componentCount(static_cast<AttrType>(value)), 0U);
  }
}

}  // namespace
}  // namespace zn::korvo_sdk
