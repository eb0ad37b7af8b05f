// Tests of parsing tuples and colours: numbers with blanks between them.
#include <vsa/foundation/tuple_parse.h>

#include <gtest/gtest.h>

#include <vector>

namespace zn {
namespace {

template <class T>
class TupleParse : public testing::Test {
 public:
  static constexpr unsigned long long COUNT = sizeof(T::components) / sizeof(double);
};

using Tuples = testing::Types<math::VecT<2, double>, math::VecT<3, double>, math::VecT<4, double>,
                              math::PosT<2, double>, math::PosT<3, double>, math::QuatT<double>,
                              math::RgbaT<double>, math::MatT<3, double>, math::MatT<4, double>>;
TYPED_TEST_SUITE(TupleParse, Tuples);

String numbers(unsigned long long count) {
  String text;
  for (unsigned long long i = 1; i <= count; ++i) text = text + String(i) + ".5 ";
  return text;
}

TYPED_TEST(TupleParse, ReadsItsComponentsInStorageOrder) {
  TypeParam out{};
  EXPECT_TRUE(String::parse(numbers(TestFixture::COUNT), TestFixture::COUNT, out));
  for (unsigned long long i = 0; i < TestFixture::COUNT; ++i) {
    EXPECT_EQ(out.components[i], static_cast<double>(i) + 1.5);
  }
}

TYPED_TEST(TupleParse, IgnoresFurtherWords) {
  TypeParam out{};
  EXPECT_TRUE(String::parse(numbers(TestFixture::COUNT) + "more x", TestFixture::COUNT, out));
  EXPECT_EQ(out.components[0], 1.5);
}

TYPED_TEST(TupleParse, FewerWordsWriteNothing) {
  TypeParam out{};
  EXPECT_FALSE(String::parse(numbers(TestFixture::COUNT - 1), TestFixture::COUNT, out));
  EXPECT_FALSE(String::parse(String(), TestFixture::COUNT, out));
  for (const double component : out.components) EXPECT_EQ(component, 0.0);
}

TYPED_TEST(TupleParse, MoreComponentsThanItHasAreRefused) {
  TypeParam out{};
  EXPECT_FALSE(String::parse(numbers(20), TestFixture::COUNT + 1, out));
  for (const double component : out.components) EXPECT_EQ(component, 0.0);
}

TYPED_TEST(TupleParse, NoComponentsAreAlwaysRead) {
  TypeParam out{};
  EXPECT_TRUE(String::parse(String("x"), 0, out));
  EXPECT_EQ(out.components[0], 0.0);
}

TYPED_TEST(TupleParse, EveryWordIsConvertedEvenAfterAFailure) {
  TypeParam out{};
  const String text = String("x ") + numbers(TestFixture::COUNT - 1);
  EXPECT_FALSE(String::parse(text, TestFixture::COUNT, out));
  EXPECT_EQ(out.components[1], 1.5);
  EXPECT_EQ(out.components[TestFixture::COUNT - 1], static_cast<double>(TestFixture::COUNT) - 0.5);
}

TEST(TupleParseWords, OnlyBlanksSeparate) {
  math::VecT<2, double> out{};
  EXPECT_TRUE(String::parse(String("   1    2 "), 2, out));
  EXPECT_EQ(out.components[1], 2);
  EXPECT_FALSE(String::parse(String("1\t2"), 2, out));
  EXPECT_FALSE(String::parse(String("1,2"), 2, out));
  EXPECT_TRUE(String::parse(String("\t3 4\n"), 2, out));  // white space around a number is ignored
  EXPECT_EQ(out.components[0], 3);
}

TEST(TupleParseWords, MoreComponentsThanAnyTupleHasAreRefused) {
  double out[MAX_COMPONENTS + 1] = {};
  const String text = numbers(MAX_COMPONENTS + 1);
  EXPECT_TRUE(parseTuple(text.view(), MAX_COMPONENTS, out));
  EXPECT_EQ(out[MAX_COMPONENTS - 1], 16.5);
  EXPECT_FALSE(parseTuple(text.view(), MAX_COMPONENTS + 1, out));
  EXPECT_EQ(out[MAX_COMPONENTS], 0);
}

TEST(ColourParse, ThreeOrFourNumbers) {
  struct Row {
    const char* text;
    bool ok;
    std::vector<double> colour;
  };
  const Row rows[] = {
      {"1 0.5 0", true, {1, 0.5, 0, 1}},
      {"1 0.5 0 0.25", true, {1, 0.5, 0, 0.25}},
      {"1 0.5 0 0.25 9", true, {1, 0.5, 0, 0.25}},
      {"1 0.5 0 x", true, {1, 0.5, 0, 1}},
      {"1 0.5", false, {}},
      {"", false, {}},
      {"x 0.5 0", false, {}},
      {"1 x 0 1", false, {}},
  };
  for (const Row& row : rows) {
    math::RgbaT<double> out{};
    EXPECT_EQ(String::parse<double>(String(row.text), out), row.ok) << row.text;
    if (!row.ok) continue;
    EXPECT_EQ(std::vector<double>(out.components, out.components + 4), row.colour) << row.text;
  }
}

}  // namespace
}  // namespace zn
