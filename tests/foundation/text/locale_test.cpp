// Tests that conversions, messages and comparisons do not depend on the locale that the host has
// set. The exception is a real that String::format writes.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include <vsa/foundation/math_types.h>
#include <vsa/foundation/string.h>
#include <vsa/foundation/string_vector.h>
#include <vsa/foundation/tuple_parse.h>
#include "tests/support/host_locale.h"
#include "tests/support/text.h"

namespace zn {
namespace {

using vsa_tests::cLocales;
using vsa_tests::HostLocale;
using vsa_tests::text;
using Lines = std::vector<std::string>;

constexpr String::Radix DECIMAL = String::Radix::Decimal;

template <class Number>
bool isRealOf(const char* characters, Number expected) {
  Number number = -1;
  return String::parse(characters, number) && number == expected;
}

template <class Number>
bool isReal(const char* characters) {
  Number number = 0;
  return String::parse(characters, number);
}

template <class Number>
bool isInteger(const char* characters, Number expected) {
  Number number = 0;
  return String::parse(characters, number, DECIMAL) && number == expected;
}

// These functions run under the locale and only collect results. The test framework, which would be
// affected by the locale, checks the results afterwards.

std::vector<bool> parsed() {
  math::VecT<2, double> pair{};
  math::RgbaT<double> colour{};
  bool isTrue = false;
  long long many = 0;
  unsigned short few = 0;
  return {
      isRealOf<double>("1.5", 1.5),
      isRealOf<float>("-2.25e1", -22.5F),
      isRealOf<double>("1234567.5", 1234567.5),
      !isReal<double>("1,5"),
      !isReal<float>("1,5"),
      !isReal<double>("1.234.567"),
      isInteger<long long>("1234567", 1234567),
      isInteger<int>(" 12 ", 12),
      !String::parse("1.234", many, DECIMAL),
      !String::parse("1,234", few, DECIMAL),
      String::parse("TRUE", isTrue) && isTrue,
      !String::parse("wahr", isTrue),
      String::parse("1.5 2.5", 2, pair) && pair.components[1] == 2.5,
      !String::parse("1,5 2,5", 2, pair),
      String::parse<double>("0.5 0 1", colour) && colour.components[0] == 0.5,
  };
}

// Returns texts without reals. String::format writes reals as printf does, with the decimal point
// of the current C locale, so their texts may differ.
Lines written() {
  return {
      text(String(1234567ULL)),
      text(String::format("%d|%llu|%c|%s", -1234567, 12345678901ULL, 'x', "y")),
      text(String("TITLE I\xC4\xB0").toLower(true)),
      text(String(" \t x \n").trim(true, true)),
      String("QUIT").compareNoCase("quit") == 0 ? "same" : "other",
      String("TITLE").contains("it", true) ? "in" : "out",
      std::to_string(String("a b  c").split(' ', true, false).size()),
      text(String("\\u00e9\\x41\\n").unescape()),
  };
}

TEST(HostLocales, ChangeNoConversion) {
  for (const char* const name : cLocales()) {
    std::vector<bool> under;
    {
      const HostLocale locale(name);
      under = parsed();
    }
    EXPECT_EQ(under, std::vector<bool>(under.size(), true)) << name;
  }
}

TEST(HostLocales, ChangeNoText) {
  for (const char* const name : cLocales()) {
    Lines under;
    {
      const HostLocale locale(name);
      under = written();
    }
    EXPECT_EQ(under, (Lines{"1234567", "-1234567|12345678901|x|y", "title i\xC4\xB0", "x", "same",
                            "in", "3",
                            "\xC3\xA9"
                            "A\n"}))
        << name;
  }
}

TEST(HostLocales, ChangeNoCharacterClass) {
  std::string letters;
  std::string digits;
  std::string spaces;
  {
    const HostLocale locale("C");
    for (int byte = 0; byte < 128; ++byte) {
      const char c = static_cast<char>(byte);
      if (String::isLetter(c)) letters += c;
      if (String::isDigit(c)) digits += c;
      if (String::isSpace(c)) spaces += c;
    }
  }
  EXPECT_EQ(letters, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
  EXPECT_EQ(digits, "0123456789");
  EXPECT_EQ(spaces, "\t\n\v\f\r ");
}

// Verifies that the tests above can fail: a stream uses the locale and writes numbers differently.
TEST(HostLocales, ChangeStreams) {
  std::string written;
  {
    const HostLocale locale("C");
    std::ostringstream stream;
    stream << 1234567.5 << ' ' << 1234567;
    written = stream.str();
  }
  EXPECT_EQ(written, "1,23457e+06 1.234.567");
}

}  // namespace
}  // namespace zn
