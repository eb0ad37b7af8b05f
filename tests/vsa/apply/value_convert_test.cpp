// Tests of all conversions between types, and of the result of each conversion.
#include "vsa/apply/values/value_convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace zn::korvo_sdk::impl {
namespace {

constexpr std::int64_t INT_MOST = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t INT_LEAST = std::numeric_limits<std::int64_t>::min();
constexpr std::uint64_t UINT_MOST = std::numeric_limits<std::uint64_t>::max();

struct MatrixRow {
  std::string_view from;
  std::string_view cells;
};

// The matrix of conversions. Rows are types of values, and columns are types of inputs, both in the
// order of AttrType from Null to Object. "o" converts without a message, "n" narrows, "." is
// refused, and "=" is the same type.
//                                        N B I U R V V V P P Q R M M S N B A O
//                                        u o n i e 2 3 4 2 3 u g 3 4 t o u r b
constexpr MatrixRow MATRIX[] = {
    {"Null", /*  */ "=.................."},  //
    {"Bool", /*  */ ".=ooo.............."}, {"Int", /*   */ ".n=oo.............."},
    {"UInt", /*  */ ".no=o.............."}, {"Real", /*  */ "..nn=ooooooo......."},
    {"Vec2", /*  */ ".....=oooooo......."}, {"Vec3", /*  */ ".....n=onooo......."},
    {"Vec4", /*  */ ".....nn=nnoo......."}, {"Pos2", /*  */ ".....ooo=ooo......."},
    {"Pos3", /*  */ ".....noon=oo......."}, {"Quat", /*  */ ".....nnonn=o......."},
    {"Rgba", /*  */ ".....nnonno=......."}, {"Mat3", /*  */ "............=o....."},
    {"Mat4", /*  */ "............n=....."}, {"String", /**/ "..............=...."},
    {"Node", /*  */ "...............=..."}, {"Buffer", /**/ "................=.."},
    {"Array", /* */ ".................=."}, {"Object", /**/ "..................="},
};

TEST(ConversionMatrix, EveryCell) {
  ASSERT_EQ(std::size(MATRIX), static_cast<std::size_t>(ATTR_TYPE_COUNT));
  for (int from = 0; from < ATTR_TYPE_COUNT; ++from) {
    const MatrixRow& row = MATRIX[from];
    ASSERT_EQ(row.from, attrTypeName(static_cast<AttrType>(from)));
    ASSERT_EQ(row.cells.size(), static_cast<std::size_t>(ATTR_TYPE_COUNT));
    for (int to = 0; to < ATTR_TYPE_COUNT; ++to) {
      const char cell = row.cells[static_cast<std::size_t>(to)];
      const Conversion expected = cell == 'n'   ? Conversion::Narrowing
                                  : cell == '.' ? Conversion::Refused
                                                : Conversion::Silent;
      EXPECT_EQ(conversionBetween(static_cast<AttrType>(from), static_cast<AttrType>(to)), expected)
          << row.from << " to " << attrTypeName(static_cast<AttrType>(to));
    }
  }
}

AttrData boolean(bool value) {
  AttrData data;
  data.type = AttrType::Bool;
  data.payload.boolean = value;
  return data;
}

AttrData integer(AttrType type, std::int64_t value) {
  AttrData data;
  data.type = type;
  data.payload.integer = value;
  return data;
}

AttrData real(double value) {
  AttrData data;
  data.type = AttrType::Real;
  data.payload.real = value;
  return data;
}

/// Returns a value with the components 1, 2, 3 and so on. The components after these are zero, as
/// in a new record.
AttrData tuple(AttrType type) {
  AttrData data;
  data.type = type;
  for (unsigned i = 0; i < componentCount(type); ++i) data.payload.components[i] = i + 1;
  return data;
}

AttrData converted(AttrData value, AttrType to) {
  convert(value, to);
  EXPECT_EQ(value.type, to);
  return value;
}

std::vector<double> components(const AttrData& value) {
  return std::vector<double>(value.payload.components,
                             value.payload.components + componentCount(value.type));
}

TEST(Convert, EqualTypesChangeNothing) {
  EXPECT_EQ(converted(real(2.5), AttrType::Real).payload.real, 2.5);
  EXPECT_EQ(converted(integer(AttrType::Int, -3), AttrType::Int).payload.integer, -3);
}

TEST(Convert, BooleansAndIntegers) {
  for (const AttrType type : {AttrType::Int, AttrType::UInt}) {
    EXPECT_EQ(converted(boolean(true), type).payload.integer, 1);
    EXPECT_EQ(converted(boolean(false), type).payload.integer, 0);
    EXPECT_FALSE(converted(integer(type, 0), AttrType::Bool).payload.boolean);
    for (const std::int64_t value : {std::int64_t{1}, std::int64_t{2}, std::int64_t{256},
                                     std::int64_t{-1}, INT_LEAST, INT_MOST}) {
      EXPECT_TRUE(converted(integer(type, value), AttrType::Bool).payload.boolean) << value;
    }
  }
  EXPECT_EQ(converted(boolean(true), AttrType::Real).payload.real, 1.0);
  EXPECT_EQ(converted(boolean(false), AttrType::Real).payload.real, 0.0);
}

TEST(Convert, IntAndUIntKeepTheirBits) {
  for (const std::int64_t value : {std::int64_t{0}, std::int64_t{-1}, INT_LEAST, INT_MOST}) {
    EXPECT_EQ(converted(integer(AttrType::Int, value), AttrType::UInt).payload.integer, value);
    EXPECT_EQ(converted(integer(AttrType::UInt, value), AttrType::Int).payload.integer, value);
  }
}

TEST(Convert, IntegersToReal) {
  EXPECT_EQ(converted(integer(AttrType::Int, -1), AttrType::Real).payload.real, -1.0);
  EXPECT_EQ(converted(integer(AttrType::UInt, -1), AttrType::Real).payload.real,
            static_cast<double>(UINT_MOST));
  EXPECT_EQ(converted(integer(AttrType::UInt, 7), AttrType::Real).payload.real, 7.0);
}

struct RoundingRow {
  double value;
  std::int64_t toInt;
  std::uint64_t toUInt;
};

TEST(Convert, RealsToIntegersRoundHalvesAwayFromZeroAndClamp) {
  const double infinity = std::numeric_limits<double>::infinity();
  const RoundingRow rows[] = {
      {2.7, 3, 3},
      {2.5, 3, 3},
      {2.4, 2, 2},
      {0.5, 1, 1},
      {0.49999999999999994, 0, 0},
      {-0.5, -1, 0},
      {-2.5, -3, 0},
      {-2.4, -2, 0},
      {-0.0, 0, 0},
      {4503599627370495.5, 4503599627370496, 4503599627370496},
      {9007199254740993.0, 9007199254740992, 9007199254740992},
      {9223372036854774784.0, 9223372036854774784, 9223372036854774784U},
      {9223372036854775808.0, INT_MOST, 9223372036854775808U},
      {-9223372036854775808.0, INT_LEAST, 0},
      {-9223372036854777856.0, INT_LEAST, 0},
      {18446744073709549568.0, INT_MOST, 18446744073709549568U},
      {18446744073709551616.0, INT_MOST, UINT_MOST},
      {1e300, INT_MOST, UINT_MOST},
      {-1e300, INT_LEAST, 0},
      {infinity, INT_MOST, UINT_MOST},
      {-infinity, INT_LEAST, 0},
      {std::numeric_limits<double>::quiet_NaN(), 0, 0},
  };
  for (const RoundingRow& row : rows) {
    EXPECT_EQ(converted(real(row.value), AttrType::Int).payload.integer, row.toInt) << row.value;
    EXPECT_EQ(
        static_cast<std::uint64_t>(converted(real(row.value), AttrType::UInt).payload.integer),
        row.toUInt)
        << row.value;
  }
}

constexpr AttrType TUPLES[] = {AttrType::Vec2, AttrType::Vec3, AttrType::Vec4, AttrType::Pos2,
                               AttrType::Pos3, AttrType::Quat, AttrType::Rgba};

TEST(Convert, RealIsCopiedToEveryComponent) {
  for (const AttrType to : TUPLES) {
    EXPECT_EQ(components(converted(real(2.5), to)), std::vector<double>(componentCount(to), 2.5));
  }
}

TEST(Convert, TuplesKeepTheirComponentsByPosition) {
  for (const AttrType from : TUPLES) {
    for (const AttrType to : TUPLES) {
      std::vector<double> expected;
      for (unsigned i = 0; i < componentCount(to); ++i) {
        expected.push_back(i < componentCount(from) ? i + 1 : 0);
      }
      EXPECT_EQ(components(converted(tuple(from), to)), expected)
          << attrTypeName(from) << " to " << attrTypeName(to);
    }
  }
}

TEST(Convert, MatricesKeepTheUpperLeftBlock) {
  EXPECT_EQ(components(converted(tuple(AttrType::Mat3), AttrType::Mat4)),
            (std::vector<double>{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}));
  EXPECT_EQ(components(converted(tuple(AttrType::Mat4), AttrType::Mat3)),
            (std::vector<double>{1, 2, 3, 5, 6, 7, 9, 10, 11}));
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
