#include "tools/scene_text/real_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace vsa_tools {

namespace {

template <class Real>
std::string textOf(Real value) {
  char text[NUMBER_TEXT_CAPACITY];
  return std::string(text, realText(value, text));
}

TEST(RealTextTest, WritesTheShortestTextThatReadsBack) {
  EXPECT_EQ("1", textOf(1.0));
  EXPECT_EQ("0", textOf(0.0));
  EXPECT_EQ("-0.0", textOf(-0.0));
  EXPECT_EQ("-0.0", textOf(-0.0f));
  EXPECT_EQ("2.5", textOf(2.5));
  EXPECT_EQ("0.1", textOf(0.1));
  EXPECT_EQ("0.1", textOf(0.1f));
  EXPECT_EQ("0.10000000149011612", textOf(static_cast<double>(0.1f)));
  EXPECT_EQ("1e-07", textOf(1e-7));
  EXPECT_EQ("-1.7976931348623157e+308", textOf(std::numeric_limits<double>::lowest()));
  EXPECT_EQ("5e-324", textOf(std::numeric_limits<double>::denorm_min()));
}

TEST(RealTextTest, WritesNonFiniteValuesAsWords) {
  EXPECT_EQ("inf", textOf(std::numeric_limits<double>::infinity()));
  EXPECT_EQ("-inf", textOf(-std::numeric_limits<float>::infinity()));
  EXPECT_EQ("nan", textOf(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_EQ("nan", textOf(-std::numeric_limits<float>::quiet_NaN()));
}

}  // namespace

}  // namespace vsa_tools
