// Tests of String::parse for booleans and numbers: its overloads and their ranges. A failure leaves
// the target unchanged. number_text_test.cpp tests the whole syntax of numbers.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include <vsa/foundation/string.h>
#include "tests/support/text.h"

namespace zn {
namespace {

using vsa_tests::string;
using namespace std::string_literals;

constexpr String::Radix BASE_TEN = String::Radix::Decimal;

static_assert(static_cast<int>(BASE_TEN) == 0);

template <class Integer>
bool parses(const String& text, Integer expected) {
  Integer out{};
  return String::parse(text, out, BASE_TEN) && out == expected;
}

template <class Integer>
bool refuses(const String& text) {
  Integer out = 77;
  return !String::parse(text, out, BASE_TEN) && out == 77;
}

template <class Integer>
class IntegerParse : public testing::Test {};

using Integers = testing::Types<signed char, unsigned char, short, unsigned short, int,
                                unsigned int, long long, unsigned long long>;
TYPED_TEST_SUITE(IntegerParse, Integers);

TYPED_TEST(IntegerParse, AcceptsItsWholeRange) {
  using Limits = std::numeric_limits<TypeParam>;
  const String maximum(std::to_string(Limits::max()).c_str());
  const String minimum(std::to_string(Limits::min()).c_str());
  EXPECT_TRUE(parses<TypeParam>(maximum, Limits::max()));
  EXPECT_TRUE(parses<TypeParam>(minimum, Limits::min()));
  EXPECT_TRUE(parses<TypeParam>("0", 0));
  EXPECT_TRUE(parses<TypeParam>("+7", 7));
  EXPECT_TRUE(parses<TypeParam>("007", 7));
  EXPECT_TRUE(parses<TypeParam>("12u", 12));
  EXPECT_TRUE(parses<TypeParam>("1e2", 100));
  EXPECT_TRUE(parses<TypeParam>("1E+2", 100));
  EXPECT_TRUE(parses<TypeParam>(" \t\n\v\f\r7 \r\n", 7));
}

TYPED_TEST(IntegerParse, RefusesAllElse) {
  for (const char* const text : {"",
                                 " ",
                                 "+",
                                 "-",
                                 "x",
                                 "1x",
                                 "x1",
                                 "1 2",
                                 "1.0",
                                 "1.",
                                 "0x10",
                                 "5U",
                                 "1e",
                                 "1e-1",
                                 "1e+",
                                 "--1",
                                 "+-1",
                                 "1uu",
                                 "u",
                                 "1u2",
                                 "true",
                                 "1e99999999999999999999",
                                 "18446744073709551616",
                                 "-9223372036854775809",
                                 "1e20",
                                 "1,0",
                                 "\xc2\xa0"
                                 "1"}) {
    EXPECT_TRUE(refuses<TypeParam>(text)) << text;
  }
  EXPECT_TRUE(refuses<TypeParam>(string("1\0"s)));
}

TYPED_TEST(IntegerParse, RefusesTheValuesNextToItsRange) {
  using Limits = std::numeric_limits<TypeParam>;
  std::string maximum = std::to_string(Limits::max());
  // One more in the last digit gives a text greater than the maximum. The character is still a
  // digit, because no maximum ends in 9.
  maximum.back() = static_cast<char>(maximum.back() + 1);
  EXPECT_TRUE(refuses<TypeParam>(String(maximum.c_str()))) << maximum;
  if (std::numeric_limits<TypeParam>::is_signed) {
    std::string minimum = std::to_string(Limits::min());
    minimum.back() = static_cast<char>(minimum.back() + 1);
    EXPECT_TRUE(refuses<TypeParam>(String(minimum.c_str()))) << minimum;
  } else {
    EXPECT_TRUE(refuses<TypeParam>("-1"));
    EXPECT_TRUE(refuses<TypeParam>("-0"));
  }
}

TEST(StringParse, SignedZero) {
  EXPECT_TRUE(parses<long long>("-0", 0));
  EXPECT_TRUE(parses<long long>("-5u", -5));
}

TEST(StringParse, Booleans) {
  struct Row {
    const char* text;
    bool ok;
    bool value;
  };
  constexpr Row ROWS[] = {
      {"true", true, true},    {"TRUE", true, true},      {"tRuE", true, true},
      {"false", true, false},  {"FALSE", true, false},    {" true\n", true, true},
      {"", false, false},      {"1", false, false},       {"tru", false, false},
      {"truee", false, false}, {"t r u e", false, false}, {"yes", false, false},
  };
  for (const Row& row : ROWS) {
    bool out = false;
    EXPECT_EQ(String::parse(row.text, out), row.ok) << row.text;
    EXPECT_EQ(out, row.ok && row.value) << row.text;
  }
}

TEST(StringParse, Reals) {
  struct Row {
    const char* text;
    double value;
  };
  constexpr Row ROWS[] = {
      {"1.5", 1.5},   {"-0.25", -0.25}, {"2.", 2},     {".5", 0.5},   {"+.5", 0.5},
      {"7", 7},       {"2f", 2},        {"2.5F", 2.5}, {"1e3", 1000}, {"1.5E-3", 0.0015},
      {"1e+2f", 100}, {" 1.5\t", 1.5},  {"1e-400", 0},
  };
  for (const Row& row : ROWS) {
    double out = 9;
    EXPECT_TRUE(String::parse(row.text, out)) << row.text;
    EXPECT_EQ(out, row.value) << row.text;
  }
  for (const char* const text : {"", ".", "-", "e5", ".e5", "1e", "1e+", "1.5.2", "1.5x", "0x1p3",
                                 "infinity", "nanf", "inff", "1ff", "1 2", "1e400", "--1"}) {
    double out = 9;
    EXPECT_FALSE(String::parse(text, out)) << text;
    EXPECT_EQ(out, 9) << text;
  }
}

TEST(StringParse, InfinitiesAndNotANumber) {
  double out = 0;
  EXPECT_TRUE(String::parse("inf", out) && std::isinf(out) && out > 0);
  EXPECT_TRUE(String::parse("-INF", out) && std::isinf(out) && out < 0);
  EXPECT_TRUE(String::parse("+NaN", out) && std::isnan(out));
  EXPECT_TRUE(String::parse("-0.0", out) && std::signbit(out));
}

TEST(StringParse, FloatsAreRoundedFromTheText) {
  float out = 0;
  EXPECT_TRUE(String::parse("0.1", out));
  EXPECT_EQ(out, 0.1F);
  // If the text were rounded to a double first, the result would be the next lower float.
  EXPECT_TRUE(String::parse("1.00000005960464484", out));
  EXPECT_EQ(out, std::nextafter(1.0F, 2.0F));
  EXPECT_FALSE(String::parse("3.5e38", out));
  EXPECT_TRUE(String::parse("1e-46", out));
  EXPECT_EQ(out, 0);
}

}  // namespace
}  // namespace zn
