// Tests of Tolerance, which decides whether two numbers count as equal.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "tools/vsa/diff/tolerance.h"

namespace {

using vsa_tools::deviation;
using vsa_tools::Tolerance;

constexpr double INF = std::numeric_limits<double>::infinity();
const double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();

TEST(ToleranceTest, WithoutOneAllBitsAreCompared) {
  const Tolerance exact;
  EXPECT_TRUE(exact.accepts(0.1, 0.1));
  EXPECT_TRUE(exact.accepts(NAN_VALUE, NAN_VALUE));
  EXPECT_FALSE(exact.accepts(0.0, -0.0));
  EXPECT_FALSE(exact.accepts(1.0, std::nextafter(1.0, 2.0)));
}

TEST(ToleranceTest, AbsoluteAndRelative) {
  const Tolerance absolute{.absolute = 0.5, .relative = std::nullopt};
  EXPECT_TRUE(absolute.accepts(1.0, 1.5));
  EXPECT_FALSE(absolute.accepts(1.0, 1.75));
  EXPECT_TRUE(absolute.accepts(0.0, -0.0));
  EXPECT_FALSE(absolute.accepts(std::int64_t{1}, std::int64_t{2}));
  const Tolerance relative{.absolute = std::nullopt, .relative = 0.01};
  EXPECT_TRUE(relative.accepts(-100.0, -101.0));
  EXPECT_FALSE(relative.accepts(100.0, 102.0));
  EXPECT_TRUE((Tolerance{.absolute = 0.5, .relative = 0.01}.accepts(100.0, 101.0)));
  EXPECT_TRUE((Tolerance{.absolute = 0.0, .relative = std::nullopt}.accepts(0.0, -0.0)));
}

TEST(ToleranceTest, NumbersThatAreNotFinite) {
  const Tolerance wide{.absolute = 1e300, .relative = 1.0};
  EXPECT_FALSE(wide.accepts(INF, 1.0));
  EXPECT_FALSE(wide.accepts(INF, -INF));
  EXPECT_FALSE(wide.accepts(NAN_VALUE, 1.0));
  EXPECT_TRUE(wide.accepts(NAN_VALUE, -NAN_VALUE));
  EXPECT_TRUE(wide.accepts(INF, INF));
}

TEST(ToleranceTest, DeviationsOfIntegersDoNotOverflow) {
  constexpr auto MIN = std::numeric_limits<std::int64_t>::min();
  constexpr auto MAX = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(18446744073709551615.0, deviation(MIN, MAX));
  EXPECT_EQ(1.0, deviation(MAX, MAX - 1));
  EXPECT_EQ(255.0, deviation<signed char>(-128, 127));
  EXPECT_EQ(2.0, deviation<unsigned char>(1, 3));
}

}  // namespace
