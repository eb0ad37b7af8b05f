// Tests of each element type of buffers.
#include <vsa/scene/data_type.h>

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace zn::korvo_sdk {
namespace {

// The names in the order of the types' values, from 0.
constexpr const char* NAMES[] = {
    "Null",   "Bool",   "Char",   "Byte",  "Int16", "Int32",    "Int64", "UInt16", "UInt32",
    "UInt64", "Float",  "Double", "Ptr",   "Vec2f", "Vec2d",    "Vec2i", "Vec2u",  "Vec3f",
    "Vec3d",  "Vec3i",  "Vec3u",  "Vec4f", "Vec4d", "Vec4i",    "Vec4u", "Pos2f",  "Pos2d",
    "Pos2i",  "Pos3f",  "Pos3d",  "Pos3i", "Quatf", "Quatd",    "Rgbf",  "Rgbd",   "Rgb8",
    "Rgbaf",  "Rgbad",  "Rgba8",  "Mat3f", "Mat3d", "Mat3i",    "Mat4f", "Mat4d",  "Mat4i",
    "Xformf", "Xformd", "Xformi", "Aabbf", "Aabbd", "Aabbi",    "Obbf",  "Obbd",   "Obbi",
    "Hsvf",   "Hsvd",   "Hslf",   "Hsld",  "Argb8", "ColorRef",
};

TEST(DataTypes, EveryName) {
  EXPECT_EQ(sizeof(DataType), 4U);
  ASSERT_EQ(std::size(NAMES), 60U);
  EXPECT_EQ(DATA_TYPE_COUNT, 60);
  for (int value = 0; value < 60; ++value) {
    EXPECT_STREQ(dataTypeName(static_cast<DataType>(value)), NAMES[value]);
  }
}

TEST(DataTypes, EnumeratorsAndNamesHaveOneOrder) {
  EXPECT_STREQ(dataTypeName(DataType::Char), "Char");
  EXPECT_STREQ(dataTypeName(DataType::Ptr), "Ptr");
  EXPECT_STREQ(dataTypeName(DataType::Vec3f), "Vec3f");
  EXPECT_STREQ(dataTypeName(DataType::Pos3i), "Pos3i");
  EXPECT_STREQ(dataTypeName(DataType::Rgb8), "Rgb8");
  EXPECT_STREQ(dataTypeName(DataType::Mat4i), "Mat4i");
  EXPECT_STREQ(dataTypeName(DataType::Hsvf), "Hsvf");
  EXPECT_STREQ(dataTypeName(DataType::Argb8), "Argb8");
  EXPECT_EQ(static_cast<int>(DataType::ColorRef), 59);
}

TEST(DataTypes, ElementBytesAreThoseOfTheComponents) {
  for (int value = 1; value < 60; ++value) {
    const auto type = static_cast<DataType>(value);
    SCOPED_TRACE(NAMES[value]);
    EXPECT_GT(componentCount(type), 0U);
    EXPECT_GT(componentBytes(type), 0U);
    EXPECT_EQ(elementBytes(type), componentCount(type) * componentBytes(type));
    EXPECT_EQ(componentBytes(componentType(type)), componentBytes(type));
    EXPECT_EQ(componentCount(componentType(type)), 1U);
  }
}

struct Family {
  const char* name;
  unsigned components;
};

constexpr Family FAMILIES[] = {
    {"Vec2", 2}, {"Vec3", 3}, {"Vec4", 4}, {"Pos2", 2},  {"Pos3", 3},   {"Quat", 4},
    {"Rgb", 3},  {"Rgba", 4}, {"Mat3", 9}, {"Mat4", 16}, {"Xform", 16}, {"Aabb", 6},
    {"Obb", 15}, {"Hsv", 3},  {"Hsl", 3},  {"Argb", 4},
};

DataType componentOf(char letter) {
  switch (letter) {
    case 'f':
      return DataType::Float;
    case 'd':
      return DataType::Double;
    case 'i':
      return DataType::Int32;
    case 'u':
      return DataType::UInt32;
    default:
      return DataType::Byte;
  }
}

// The name of a type with several components is a name in FAMILIES and one character for the type
// of the components: f, d, i, u, or 8 for bytes. Vec3f has three floats, Rgb8 three bytes. The
// exception is ColorRef.
TEST(DataTypes, NamesGiveTypeAndNumberOfComponents) {
  int known = 0;
  for (int value = 0; value < 60; ++value) {
    const std::string name = NAMES[value];
    for (const Family& family : FAMILIES) {
      if (name.substr(0, name.size() - 1) != family.name) continue;
      EXPECT_EQ(componentCount(static_cast<DataType>(value)), family.components) << name;
      EXPECT_EQ(componentType(static_cast<DataType>(value)), componentOf(name.back())) << name;
      ++known;
    }
  }
  EXPECT_EQ(known, 46);  // all but Null, ColorRef and the twelve types of one component
  EXPECT_EQ(componentCount(DataType::ColorRef), 4U);
  EXPECT_EQ(componentType(DataType::ColorRef), DataType::Byte);
  for (int value = 1; value < static_cast<int>(DataType::Vec2f); ++value) {
    EXPECT_EQ(componentCount(static_cast<DataType>(value)), 1U) << NAMES[value];
    EXPECT_EQ(componentType(static_cast<DataType>(value)), static_cast<DataType>(value));
  }
}

TEST(DataTypes, NullAndUnknownTypes) {
  for (const int value : {0, 60, 61, 1000, -1}) {
    const auto type = static_cast<DataType>(value);
    EXPECT_STREQ(dataTypeName(type), value == 0 ? "Null" : "<unknown>");
    EXPECT_EQ(componentType(type), DataType::Null);
    EXPECT_EQ(componentCount(type), 0U);
    EXPECT_EQ(componentBytes(type), 0U);
    EXPECT_EQ(elementBytes(type), 0U);
  }
}

// 48 types have a keyword. Of the other types, Null means that there is none, and only hosts use
// the rest.
TEST(DataTypes, BufferElements) {
  int withKeyword = 0;
  for (int value = 0; value < 60; ++value) {
    const std::string name = NAMES[value];
    const bool isForHosts = name == "Null" || name == "Bool" || name == "Ptr" ||
                            name.starts_with("Xform") || name.starts_with("Aabb") ||
                            name.starts_with("Obb");
    EXPECT_NE(isBufferElement(static_cast<DataType>(value)), isForHosts) << name;
    withKeyword += isForHosts ? 0 : 1;
  }
  EXPECT_EQ(withKeyword, 48);
  EXPECT_FALSE(isBufferElement(static_cast<DataType>(60)));
  EXPECT_FALSE(isBufferElement(static_cast<DataType>(-1)));
}

TEST(DataTypes, ComponentsAreVisitedWithTheirCppType) {
  for (int value = -1; value <= 60; ++value) {
    const DataType component = componentType(static_cast<DataType>(value));
    std::size_t bytes = 0;
    const bool isVisited = visitComponent(component, [&](auto number) { bytes = sizeof(number); });
    const bool isNumber = component != DataType::Null && component != DataType::Ptr;
    EXPECT_EQ(isVisited, isNumber) << value;
    EXPECT_EQ(bytes, isNumber ? componentBytes(component) : 0U) << value;
  }
}

}  // namespace
}  // namespace zn::korvo_sdk
