// Tests of number_text with the files of tests/numbers, with texts that are hard to round, and with
// texts of a million characters. The expected values come from functions of the C library such as
// strtod, which is exact. The tests run in the C locale, because strtod expects another decimal
// point in some locales.

#include "foundation/numbers/number_text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace zn {
namespace {

template <class Number>
bool read(const std::string& text, Number& out) {
  // The memory block has the size of the text, so that a sanitizer detects an access past its end.
  const auto copy = std::make_unique<char[]>(text.size());
  std::memcpy(copy.get(), text.data(), text.size());
  if constexpr (std::is_floating_point_v<Number>) {
    return realFromText(copy.get(), copy.get() + text.size(), out);
  } else {
    return integerFromText(copy.get(), copy.get() + text.size(), out);
  }
}

/// Returns whether the bits of both numbers are equal, or both are not-a-number.
template <class Number>
bool isSame(Number a, Number b) {
  if constexpr (std::is_floating_point_v<Number>) {
    if (std::isnan(a) && std::isnan(b)) return true;
  }
  return std::memcmp(&a, &b, sizeof a) == 0;
}

template <class Number>
Number reference(const std::string& text) {
  if constexpr (std::is_same_v<Number, float>) {
    return std::strtof(text.c_str(), nullptr);
  } else if constexpr (std::is_same_v<Number, double>) {
    return std::strtod(text.c_str(), nullptr);
  } else if constexpr (std::is_unsigned_v<Number>) {
    return static_cast<Number>(std::strtoull(text.c_str(), nullptr, 10));
  } else {
    return static_cast<Number>(std::strtoll(text.c_str(), nullptr, 10));
  }
}

/// Checks a line of a file: a text, a tab, and the value or "fail".
template <class Number>
void checkLine(const std::string& text, const std::string& expected) {
  constexpr Number UNCHANGED = 77;
  Number out = UNCHANGED;
  if (expected == "fail") {
    EXPECT_FALSE(read(text, out)) << '"' << text << '"';
    EXPECT_EQ(out, UNCHANGED) << '"' << text << '"';
  } else {
    EXPECT_TRUE(read(text, out)) << '"' << text << '"';
    EXPECT_TRUE(isSame(out, reference<Number>(expected)))
        << '"' << text << "\" gives " << +out << ", expected " << expected;
  }
}

template <class Number>
void checkFile(const std::filesystem::path& path) {
  const bool refuses = path.stem().string().ends_with("_refuse");
  std::ifstream file(path, std::ios::binary);
  std::string line;
  int lines = 0;
  while (std::getline(file, line)) {
    const size_t tab = line.rfind('\t');
    ASSERT_NE(tab, std::string::npos) << path << ": " << line;
    const std::string expected = line.substr(tab + 1);
    EXPECT_EQ(expected == "fail", refuses) << path << ": " << line;
    checkLine<Number>(line.substr(0, tab), expected);
    ++lines;
  }
  EXPECT_GT(lines, 0) << path;
}

struct FileType {
  const char* name;
  void (*check)(const std::filesystem::path&);
};

const FileType FILE_TYPES[] = {
    {"float", checkFile<float>},        {"double", checkFile<double>},
    {"int8", checkFile<signed char>},   {"uint8", checkFile<unsigned char>},
    {"int16", checkFile<short>},        {"uint16", checkFile<unsigned short>},
    {"int32", checkFile<int>},          {"uint32", checkFile<unsigned int>},
    {"int64", checkFile<long long>},    {"uint64", checkFile<unsigned long long>},
    {"int64", checkFile<std::int64_t>}, {"uint64", checkFile<std::uint64_t>},
};

TEST(NumberText, FilesOfNumbers) {
  int files = 0;
  const auto folder = std::filesystem::path(VSA_TEST_DIR) / "numbers";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string stem = entry.path().stem().string();
    const std::string type = stem.substr(0, stem.find('_'));
    bool known = false;
    for (const FileType& row : FILE_TYPES) {
      if (type != row.name) continue;
      SCOPED_TRACE(stem);
      row.check(entry.path());
      known = true;
    }
    EXPECT_TRUE(known && (stem == type + "_accept" || stem == type + "_refuse"))
        << entry.path() << " is no file of numbers";
    ++files;
  }
  EXPECT_EQ(files, 20);
}

TEST(NumberText, EveryWhiteSpaceAroundIsIgnored) {
  int number = 0;
  EXPECT_TRUE(read<int>(" \t\n\v\f\r42\r\f\v\n\t ", number));
  EXPECT_EQ(number, 42);
  double real = 0;
  EXPECT_TRUE(read<double>("\t\n-0.5f\r\n", real));
  EXPECT_EQ(real, -0.5);
  EXPECT_FALSE(read<double>(" \t\n\v\f\r", real));
  EXPECT_FALSE(read<int>("\t", number));
  EXPECT_FALSE(read<int>(std::string("4\0", 2), number));
  EXPECT_FALSE(
      read<int>("\xA0"
                "4",
                number));
  EXPECT_FALSE(read<int>("4\xFF", number));
}

// The exponent of an integer may have a plus sign, and that of a real a minus sign, too.
TEST(NumberText, OnlyASignOrADigitFollowsTheExponentLetter) {
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    const bool isDigit = c >= '0' && c <= '9';
    const std::string text = std::string("1e") + c + '1';
    int integer = 0;
    EXPECT_EQ(read(text, integer), c == '+' || c == '0') << text;  // 1e11 does not fit in an int
    double real = 0;
    EXPECT_EQ(read(text, real), c == '+' || c == '-' || isDigit) << text;
  }
}

/// Expects that the text has the same value as with strtod. If that value is infinite, the text
/// must be refused.
template <class Real>
void checkFinite(const std::string& text) {
  const Real expected = reference<Real>(text);
  Real out = 77;
  const bool isRead = read(text, out);
  ASSERT_EQ(isRead, !std::isinf(expected)) << text;
  ASSERT_TRUE(isSame(out, isRead ? expected : Real{77})) << text << " gives " << out;
}

void checkBoth(const std::string& text) {
  checkFinite<float>(text);
  checkFinite<double>(text);
}

/// Checks the decimal, two that are slightly farther from zero, and two that are slightly closer to
/// zero. For a decimal of 0, there are no closer ones.
void checkAround(std::string text) {
  checkBoth(text);
  const size_t exponentAt = std::min(text.find('e'), text.size());
  const std::string exponent = text.substr(exponentAt);
  text.resize(exponentAt);
  checkBoth(text + "1" + exponent);
  checkBoth(text + std::string(900, '0') + "1" + exponent);
  const size_t last = text.find_last_not_of("0.");
  if (last == std::string::npos || text[last] == '-') return;
  --text[last];
  checkBoth(text + "999" + exponent);
  checkBoth(text + std::string(900, '9') + exponent);
}

/// Returns all digits of `value`.
std::string exactText(double value) {
  char text[1200];
  std::snprintf(text, sizeof text, "%.780e", value);
  std::string digits = text;
  const size_t exponentAt = digits.find('e');
  const std::string exponent = digits.substr(exponentAt);
  digits.resize(digits.find_last_not_of('0', exponentAt - 1) + 1);
  if (digits.back() == '.') digits += '0';
  return digits + exponent;
}

/// The number of digits before the point in a decimal of these tests: one more than the greatest
/// double has. The decimals are texts, because their values may be outside the range of every type.
constexpr size_t BEFORE_POINT = 310;

std::string digitsOf(double magnitude) {
  char text[1600];
  const int length = std::snprintf(text, sizeof text, "%0*.1100f", 1411, magnitude);
  std::string digits(text, static_cast<size_t>(length));
  return digits.erase(BEFORE_POINT, 1);
}

std::string sumOf(const std::string& a, const std::string& b) {
  std::string sum(a.size(), '0');
  int carry = 0;
  for (size_t i = a.size(); i-- > 0;) {
    const int column = (a[i] - '0') + (b[i] - '0') + carry;
    sum[i] = static_cast<char>('0' + column % 10);
    carry = column / 10;
  }
  return sum;
}

std::string halfOf(std::string digits) {
  int rest = 0;
  for (char& digit : digits) {
    const int column = 10 * rest + (digit - '0');
    digit = static_cast<char>('0' + column / 2);
    rest = column % 2;
  }
  return digits;
}

std::string asText(const std::string& digits) {
  const size_t first = digits.find_first_not_of('0');
  if (first == std::string::npos) return "0.0";
  const size_t last = digits.find_last_not_of('0');
  const std::string behind = last == first ? "0" : digits.substr(first + 1, last - first);
  const auto exponent = static_cast<long>(BEFORE_POINT) - 1 - static_cast<long>(first);
  return digits.substr(first, 1) + "." + behind + "e" + std::to_string(exponent);
}

TEST(NumberText, DecimalsOfTheseTests) {
  EXPECT_EQ(asText(digitsOf(0)), "0.0");
  EXPECT_EQ(asText(digitsOf(1250)), "1.25e3");
  EXPECT_EQ(asText(halfOf(digitsOf(0.5))), "2.5e-1");
  EXPECT_EQ(asText(sumOf(digitsOf(95), digitsOf(5.5))), "1.005e2");
  EXPECT_EQ(asText(halfOf(digitsOf(std::ldexp(1.0, -1074)))).substr(0, 8), "2.470328");
}

/// Returns a finite random value of any exponent, which may be denormal.
template <class Real, class Bits>
Real anyReal(std::mt19937_64& random) {
  for (;;) {
    const Bits bits = static_cast<Bits>(random());
    Real value;
    std::memcpy(&value, &bits, sizeof value);
    if (std::isfinite(value)) return value;
  }
}

TEST(NumberText, HalfWayBetweenFloats) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 3000; ++i) {
    const float low = anyReal<float, uint32_t>(random);
    const float high = std::nextafterf(low, std::numeric_limits<float>::infinity());
    if (std::isinf(high)) continue;
    checkAround(exactText((static_cast<double>(low) + static_cast<double>(high)) / 2));
    if (HasFatalFailure()) return;
  }
}

/// Tests texts of seventeen digits whose nearest double is half-way between two floats, while most
/// of the texts themselves are not. A float that is rounded from that double would always be the
/// even one of the two. Therefore the text itself must be rounded.
TEST(NumberText, NextToHalfWayBetweenFloats) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 20000; ++i) {
    // Every second number is denormal.
    const float low =
        i % 2 == 0 ? static_cast<float>(1e-38 + static_cast<double>(random() % 1000) * 1e-42)
                   : std::ldexp(static_cast<float>(random() >> 40), -static_cast<int>(i % 60));
    const float high = std::nextafterf(low, 1e38F);
    char text[64];
    std::snprintf(text, sizeof text, "%.16e",
                  (static_cast<double>(low) + static_cast<double>(high)) / 2);
    checkBoth(text);
    if (HasFatalFailure()) return;
  }
}

TEST(NumberText, HalfWayBetweenDoubles) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 3000; ++i) {
    double low = anyReal<double, uint64_t>(random);
    if (i % 2 == 0)
      low = std::ldexp(static_cast<double>(random() >> 11), static_cast<int>(random() % 120) - 100);
    const double high = std::nextafter(low, std::numeric_limits<double>::infinity());
    if (std::isinf(high)) continue;
    const std::string sum = sumOf(digitsOf(std::abs(low)), digitsOf(std::abs(high)));
    checkAround((std::signbit(low) ? "-" : "") + asText(halfOf(sum)));
    if (HasFatalFailure()) return;
  }
}

TEST(NumberText, EndsOfTheRanges) {
  for (const double value :
       {std::ldexp(1.0, -149), std::ldexp(1.0, -150), std::ldexp(1.0, -126),
        std::ldexp(1.0 - std::ldexp(1.0, -24), -126), std::ldexp(1.0 - std::ldexp(1.0, -25), 128),
        std::ldexp(1.0, 128), std::ldexp(1.0, -1074), std::ldexp(1.0, -1022),
        std::numeric_limits<double>::max()}) {
    checkAround(exactText(value));
    checkAround("-" + exactText(value));
  }
  const std::string largest = digitsOf(std::numeric_limits<double>::max());
  for (const std::string& digits :
       {halfOf(digitsOf(std::ldexp(1.0, -1074))), sumOf(largest, digitsOf(std::ldexp(1.0, 971))),
        sumOf(largest, digitsOf(std::ldexp(1.0, 970)))}) {
    checkAround(asText(digits));
  }
}

TEST(NumberText, AllExponentsInAndOutsideTheTables) {
  std::mt19937_64 random(3);
  for (int exponent = -370; exponent <= 340; ++exponent) {
    for (int i = 0; i < 60; ++i) {
      const uint64_t digits = random() >> (random() % 60);
      checkBoth(std::to_string(digits) + "e" + std::to_string(exponent));
      if (HasFatalFailure()) return;
    }
  }
}

TEST(NumberText, AMillionCharacters) {
  constexpr size_t MANY = 1'000'000;
  const std::string zeros(MANY, '0'), nines(MANY, '9');
  struct Row {
    std::string text;
    double expected;
  };
  const Row rows[] = {
      {zeros + "7", 7},
      {"1" + zeros + "e-1000000", 1},
      {"0." + zeros + "1e1000001", 1},
      {"-0." + zeros + "25e+1000001", -2.5},
      {nines + "e-1000000", 1},
      {"0." + nines, 1},
      {"2.5e" + zeros, 2.5},
      {"2.5e-" + zeros + "1", 0.25},
      {"0e" + nines, 0},
      {"1e-" + nines, 0},
      {"-1e-" + nines, -0.0},
      {"9007199254740993." + zeros + "1", 9007199254740994},
      {"9007199254740993." + zeros, 9007199254740992},
  };
  for (const Row& row : rows) {
    double wide = 77;
    float narrow = 77;
    EXPECT_TRUE(read(row.text, wide)) << row.text.substr(0, 20);
    EXPECT_TRUE(read(row.text, narrow)) << row.text.substr(0, 20);
    EXPECT_TRUE(isSame(wide, row.expected)) << row.text.substr(0, 20) << ": " << wide;
    EXPECT_TRUE(isSame(narrow, static_cast<float>(row.expected))) << row.text.substr(0, 20);
  }
  double real = 77;
  EXPECT_FALSE(read(nines, real));
  EXPECT_FALSE(read("1e" + nines, real));
  EXPECT_FALSE(read(nines + "x", real));
  int integer = 77;
  EXPECT_FALSE(read(nines, integer));
  EXPECT_FALSE(read("1e" + nines, integer));
  EXPECT_EQ(integer, 77);
  EXPECT_TRUE(read(zeros + "7e" + zeros + "2", integer));
  EXPECT_EQ(integer, 700);
  EXPECT_TRUE(read("-0e" + nines, integer));
  EXPECT_EQ(integer, 0);
}

}  // namespace
}  // namespace zn
