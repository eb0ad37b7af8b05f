// Tests of the text of a number: a table of numbers in all notations, and a sample of positive
// numbers whose digits must be those of std::to_chars. The program number_survey compares all
// floats. The last test computes the table of powers of ten again.
#include "foundation/numbers/number_print.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <limits>
#include <random>
#include <string>

#include "foundation/numbers/shortest_decimal.h"

namespace {

using zn::numbers::PRINT_CAPACITY;

template <class Number>
std::string printed(Number value) {
  char text[PRINT_CAPACITY];
  return std::string(text, zn::numbers::printNumber(text, value));
}

std::string withPoint(double value) {
  char text[PRINT_CAPACITY];
  return std::string(text, zn::numbers::printRealWithPoint(text, value));
}

TEST(NumberPrint, Doubles) {
  constexpr double INF = std::numeric_limits<double>::infinity();
  constexpr double NAN_OF_TEXT = std::numeric_limits<double>::quiet_NaN();
  const std::pair<double, const char*> rows[] = {
      {0.0, "0"},
      {-0.0, "-0"},
      {1, "1"},
      {-1, "-1"},
      {0.5, "0.5"},
      {100, "100"},
      {10000, "10000"},
      {100000, "1e5"},
      {120000, "120000"},
      {1200000, "1200000"},
      {1.2e7, "1.2e7"},
      {123456789, "123456789"},
      {1073741824, "1073741824"},
      {9007199254740993, "9007199254740992"},
      {1e17, "1e17"},
      {0.01, "0.01"},
      {0.001, "0.001"},
      {0.0001, "1e-4"},
      {0.00012, "0.00012"},
      {0.000012, "1.2e-5"},
      {0.1, "0.1"},
      {0.30000000000000004, "0.30000000000000004"},
      {1.0 / 3, "0.3333333333333333"},
      {123456.789, "123456.789"},
      {12345678901.5, "12345678901.5"},
      {1.2345678901e-10, "1.2345678901e-10"},
      {DBL_MAX, "1.7976931348623157e308"},
      {-DBL_MAX, "-1.7976931348623157e308"},
      {DBL_MIN, "2.2250738585072014e-308"},
      {DBL_TRUE_MIN, "5e-324"},
      {9.5e-322, "9.5e-322"},
      {INF, "inf"},
      {-INF, "-inf"},
      {NAN_OF_TEXT, "nan"},
      {-NAN_OF_TEXT, "-nan"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(printed(value), text);
}

TEST(NumberPrint, Floats) {
  const std::pair<float, const char*> rows[] = {
      {0.0F, "0"},
      {-0.0F, "-0"},
      {0.1F, "0.1"},
      {16777216.0F, "16777216"},
      {FLT_MAX, "3.4028235e38"},
      {FLT_MIN, "1.1754944e-38"},
      {FLT_TRUE_MIN, "1e-45"},
      {0.33333334F, "0.33333334"},
      {1e9F, "1e9"},
      {123456790000.0F, "123456790000"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(printed(value), text);
}

TEST(NumberPrint, RealsWithPoint) {
  const std::pair<double, const char*> rows[] = {
      {0.0, "0.0"},       {-0.0, "-0.0"},       {1, "1.0"},
      {1.5, "1.5"},       {1e5, "1.0e5"},       {1e-5, "1.0e-5"},
      {1.5e-7, "1.5e-7"}, {-1e300, "-1.0e300"}, {-std::numeric_limits<double>::infinity(), "-inf"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(withPoint(value), text);
}

TEST(NumberPrint, Integers) {
  EXPECT_EQ(printed(INT64_MIN), "-9223372036854775808");
  EXPECT_EQ(printed(UINT64_MAX), "18446744073709551615");
  EXPECT_EQ(printed(static_cast<signed char>(-128)), "-128");
  EXPECT_EQ(printed(static_cast<unsigned char>(255)), "255");
  EXPECT_EQ(printed(static_cast<short>(-7)), "-7");
}

/// Returns the digits and the exponent of a positive number as "ddde-x", for any notation.
std::string normalized(std::string text) {
  int exponent = 0;
  if (const std::size_t e = text.find('e'); e != std::string::npos) {
    exponent = std::stoi(text.substr(e + 1));
    text.resize(e);
  }
  if (const std::size_t point = text.find('.'); point != std::string::npos) {
    exponent -= static_cast<int>(text.size() - point - 1);
    text.erase(point, 1);
  }
  text.erase(0, text.find_first_not_of('0'));
  const std::size_t last = text.find_last_not_of('0') + 1;
  exponent += static_cast<int>(text.size() - last);
  return text.substr(0, last) + 'e' + std::to_string(exponent);
}

template <class Real>
std::string reference(Real value) {
  char text[PRINT_CAPACITY];
  const auto end =
      std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
  return normalized(std::string(text, end));
}

template <class Real>
void expectShortest(Real value) {
  const std::string text = printed(value);
  ASSERT_EQ(normalized(text), reference(value)) << text;
  char plain[PRINT_CAPACITY];
  const auto end = std::to_chars(plain, plain + sizeof plain, value).ptr;
  ASSERT_LE(text.size(), static_cast<std::size_t>(end - plain)) << text;
}

TEST(NumberPrint, DoublesOfEveryExponentHaveTheDigitsOfToChars) {
  std::mt19937_64 random(1);
  constexpr std::uint64_t MANTISSA = (std::uint64_t{1} << 52) - 1;
  for (std::uint64_t exponent = 0; exponent < 0x7FF; ++exponent) {
    for (int i = 0; i < 40; ++i) {
      std::uint64_t mantissa = i == 0 ? 0 : i == 1 ? MANTISSA : i == 2 ? 1 : random() & MANTISSA;
      if (exponent == 0 && mantissa == 0) mantissa = 2;
      expectShortest(std::bit_cast<double>(exponent << 52 | mantissa));
    }
  }
}

TEST(NumberPrint, FloatsHaveTheDigitsOfToChars) {
  constexpr std::uint32_t STEP = 4099;  // an odd step, so that the low bits vary, too
  for (std::uint32_t bits = 1; bits < 0x7F800000; bits += STEP) {
    expectShortest(std::bit_cast<float>(bits));
  }
}

TEST(NumberPrint, DecimalsHaveTheDigitsOfToChars) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 50000; ++i) {
    const double decimal = static_cast<double>(random() % 1000000) / 1000;
    if (decimal == 0) continue;
    expectShortest(decimal);
    expectShortest(static_cast<float>(decimal));
  }
}

// --- the table of powers of ten ---

using Number = std::vector<std::uint32_t>;  // the lowest word first

void multiply(Number& number, std::uint32_t factor) {
  std::uint64_t carry = 0;
  for (std::uint32_t& word : number) {
    carry += std::uint64_t{word} * factor;
    word = static_cast<std::uint32_t>(carry);
    carry >>= 32;
  }
  if (carry != 0) number.push_back(static_cast<std::uint32_t>(carry));
}

bool bitAt(const Number& number, long index) {
  const long words = static_cast<long>(number.size());
  if (index < 0 || index / 32 >= words) return false;
  return (number[static_cast<std::size_t>(index / 32)] >> (index % 32) & 1) != 0;
}

long bitWidth(const Number& number) {
  return static_cast<long>(number.size()) * 32 - std::countl_zero(number.back());
}

/// Returns whether left >= right.
bool isAtLeast(const Number& left, const Number& right) {
  for (long bit = std::max(bitWidth(left), bitWidth(right)); bit >= 0; --bit) {
    if (bitAt(left, bit) != bitAt(right, bit)) return bitAt(left, bit);
  }
  return true;
}

void subtract(Number& left, const Number& right) {
  std::int64_t borrow = 0;
  for (std::size_t i = 0; i < left.size(); ++i) {
    std::int64_t word = std::int64_t{left[i]} - (i < right.size() ? right[i] : 0) + borrow;
    borrow = word < 0 ? -1 : 0;
    left[i] = static_cast<std::uint32_t>(word & 0xFFFFFFFF);
  }
}

zn::detail::Wide plusOne(zn::detail::Wide bits) {
  ++bits.low;
  bits.high += bits.low == 0 ? 1 : 0;
  return bits;
}

/// Returns the leading 128 bits of `number`, rounded up.
zn::detail::Wide leadingBits(const Number& number) {
  zn::detail::Wide bits{0, 0};
  const long width = bitWidth(number);
  for (long i = 1; i <= 128; ++i) {
    bits = {bits.high << 1 | bits.low >> 63, bits.low << 1 | (bitAt(number, width - i) ? 1 : 0)};
  }
  bool isExact = true;
  for (long i = width - 129; i >= 0; --i) isExact = isExact && !bitAt(number, i);
  return isExact ? bits : plusOne(bits);
}

/// Returns the leading 128 bits of 1 / number by long division, rounded up. `number` must not be a
/// power of two.
zn::detail::Wide leadingBitsOfReciprocal(const Number& number) {
  Number rest{1};
  while (!isAtLeast(rest, number)) multiply(rest, 2);
  zn::detail::Wide bits{0, 0};
  for (int i = 0; i < 128; ++i) {
    const bool fits = isAtLeast(rest, number);
    if (fits) subtract(rest, number);
    multiply(rest, 2);
    bits = {bits.high << 1 | bits.low >> 63, bits.low << 1 | (fits ? 1 : 0)};
  }
  return plusOne(bits);
}

TEST(PowersOfTen, EveryRow) {
  using namespace zn::numbers;
  const auto row = [](int exponent) {
    return DOUBLE_POWERS[static_cast<std::size_t>(exponent - MIN_DOUBLE_POWER)];
  };
  Number power{1};
  for (int exponent = 0; exponent <= MAX_DOUBLE_POWER; ++exponent, multiply(power, 5)) {
    const zn::detail::Wide positive = leadingBits(power);
    EXPECT_EQ(row(exponent).high, positive.high) << exponent;
    EXPECT_EQ(row(exponent).low, positive.low) << exponent;
    if (exponent == 0 || -exponent < MIN_DOUBLE_POWER) continue;
    const zn::detail::Wide negative = leadingBitsOfReciprocal(power);
    EXPECT_EQ(row(-exponent).high, negative.high) << -exponent;
    EXPECT_EQ(row(-exponent).low, negative.low) << -exponent;
  }
}

}  // namespace
