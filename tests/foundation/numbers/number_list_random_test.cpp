// Tests of readNumberRun() and all of its kernels with random lists. The expected reals come from
// strtof and strtod, and the expected integers from a simple conversion in this file.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/foundation/numbers/number_list_kernels_check.h"

namespace zn {
namespace {

using namespace number_list_tests;

/// Random texts of numbers. Some are as exporters write them, and some are hard to round. The seed
/// makes failures reproducible.
class RandomTexts {
 public:
  explicit RandomTexts(uint64_t seed) : random_(seed) {}

  std::string real() {
    switch (random_() % 10) {
      case 0:
        return printed('f', upTo(10), uniform() * 1000);
      case 1:
        return printed('g', 1 + upTo(17), uniform() * std::pow(10.0, upTo(12) - 6));
      case 2:
        return printed('e', upTo(18), uniform() * std::pow(10.0, upTo(70) - 40));
      case 3:
        return printed('g', 9, static_cast<double>(anyFloat()));
      case 4:
        return printed('g', 17, anyDouble());
      case 5:
        return halfWay();
      case 6:
        return digits(1 + upTo(20)) + "." + digits(upTo(20));
      case 7:
        return "0." + std::string(static_cast<size_t>(upTo(12)), '0') + digits(1 + upTo(19));
      case 8:
        return nearPower();
      default:
        return sign() + digits(1 + upTo(9)) + "." + digits(upTo(7));
    }
  }

  std::string integer() {
    const uint64_t bits = random_() >> (random_() % 64);
    switch (random_() % 4) {
      case 0:
        return sign() + std::to_string(bits);
      case 1:
        return std::to_string(static_cast<int64_t>(bits));
      case 2:
        return sign() + digits(1 + upTo(21));
      default:
        return sign() + std::to_string(bits % 100000);
    }
  }

 private:
  int upTo(int last) { return static_cast<int>(random_() % static_cast<uint64_t>(last + 1)); }
  std::string sign() { return random_() % 2 != 0 ? "-" : ""; }
  double uniform() { return static_cast<double>(random_() >> 11) * 0x1p-52 - 1; }

  std::string digits(int count) {
    std::string text;
    while (count-- > 0) text += static_cast<char>('0' + upTo(9));
    return text;
  }

  /// Returns the text that printf writes for %f, %e or %g.
  static std::string printed(char kind, int digits, double value) {
    char text[512];
    std::snprintf(text, sizeof text,
                  kind == 'f'   ? "%.*f"
                  : kind == 'e' ? "%.*e"
                                : "%.*g",
                  digits, value);
    return text;
  }

  float anyFloat() {
    const auto bits = static_cast<uint32_t>(random_());
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return std::isfinite(value) ? value : 1.5F;
  }

  double anyDouble() {
    const uint64_t bits = random_();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return std::isfinite(value) ? value : 1.5;
  }

  /// Returns a number half-way between two floats or two doubles. It is an odd number of 25 or 54
  /// bits, divided by a power of two: floats have a precision of 24 bits, and doubles of 53 bits.
  /// Some results are only close to the middle, because they are rounded or their last digit is
  /// replaced.
  std::string halfWay() {
    const int bits = random_() % 2 != 0 ? 25 : 54;
    const uint64_t odd = (random_() >> (64 - bits)) | 1 | (uint64_t{1} << (bits - 1));
    char text[128];
    std::snprintf(text, sizeof text, "%.*Lf", upTo(22),
                  std::ldexp(static_cast<long double>(odd), -upTo(20)));
    std::string result = sign() + text;
    if (random_() % 3 == 0) result.back() = static_cast<char>('0' + upTo(9));
    return result;
  }

  /// Returns a text whose digits are those of a number near 2^24, 2^53, 2^63, 10^15, 10^16 or
  /// 10^18: at most 4 less or 4 greater. Some texts also have a point anywhere, an exponent, or
  /// both.
  std::string nearPower() {
    const uint64_t centres[] = {uint64_t{1} << 24, uint64_t{1} << 53, uint64_t{1} << 63,
                                1000000000000000,  10000000000000000, 1000000000000000000};
    const uint64_t number = centres[random_() % 6] + random_() % 9 - 4;
    std::string text = std::to_string(number);
    if (random_() % 2 != 0)
      text.insert(static_cast<size_t>(upTo(static_cast<int>(text.size()))), ".");
    if (random_() % 4 == 0) text += "e" + std::to_string(upTo(60) - 30);
    return sign() + text;
  }

  std::mt19937_64 random_;
};

/// These functions convert a text: a real with the C library, and an integer digit by digit. They
/// return false if the value is out of range, and for an unsigned integer with a minus sign.
bool reference(const std::string& text, float& out) {
  out = std::strtof(text.c_str(), nullptr);
  return std::isfinite(out);
}

bool reference(const std::string& text, double& out) {
  out = std::strtod(text.c_str(), nullptr);
  return std::isfinite(out);
}

template <class Integer>
bool reference(const std::string& text, Integer& out) {
  if (std::is_unsigned_v<Integer> && text[0] == '-') return false;
  uint64_t magnitude = 0;
  for (const char c : text) {
    if (c == '-') continue;
    const auto digit = static_cast<uint64_t>(c - '0');
    if (magnitude > (std::numeric_limits<uint64_t>::max() - digit) / 10) return false;
    magnitude = magnitude * 10 + digit;
  }
  const auto max = static_cast<uint64_t>(std::numeric_limits<Integer>::max());
  if (magnitude > max + (text[0] == '-' ? 1 : 0)) return false;
  out = static_cast<Integer>(text[0] == '-' ? ~magnitude + 1 : magnitude);
  return true;
}

/// A list of random texts, and the values of the texts.
template <class Number>
struct RandomList {
  struct Field {
    size_t start;
    bool isNumber;
    Number value;
  };
  std::string text;
  std::vector<Field> fields;

  RandomList(RandomTexts& texts, size_t count) {
    for (size_t i = 0; i < count; ++i) {
      const std::string field = std::is_floating_point_v<Number> ? texts.real() : texts.integer();
      if (i != 0) text += ' ';
      Field row{text.size(), false, 0};
      row.isNumber = reference(field, row.value);
      fields.push_back(row);
      text += field;
    }
  }
};

/// Reads the list and compares every value. Each call of `run` ends at the next number that it
/// refuses, and the next call begins after that number.
template <class Number>
void checkRandomList(ReadFunction<Number> run, const RandomList<Number>& list) {
  const char* const end = list.text.data() + list.text.size();
  std::vector<Number> out(list.fields.size());
  size_t field = 0;
  while (field < list.fields.size()) {
    const char* const from = list.text.data() + list.fields[field].start;
    const NumberRun got = run(from, end, out.data() + field, out.size() - field);
    for (const size_t last = field + got.count; field < last; ++field) {
      const auto& row = list.fields[field];
      ASSERT_TRUE(row.isNumber && isSame(out[field], row.value))
          << list.text.substr(row.start, 60) << " gives " << +out[field];
    }
    if (field == list.fields.size()) {
      ASSERT_EQ(got.next, end);
      return;
    }
    const auto& row = list.fields[field];
    ASSERT_EQ(got.next, list.text.data() + row.start);
    ASSERT_FALSE(row.isNumber) << list.text.substr(row.start, 60);
    ++field;
  }
}

template <class Number>
void checkRandomLists(uint64_t seed, int lists) {
  RandomTexts texts(seed);
  for (int i = 0; i < lists; ++i) {
    const RandomList<Number> list(texts, 50);
    for (const ReadFunction<Number> run : runs<Number>()) {
      ASSERT_NO_FATAL_FAILURE(checkRandomList(run, list));
    }
  }
}

/// Returns how many rounds each test runs: the environment variable VSA_NUMBER_ROUNDS if it is set,
/// but at least 1, otherwise 1.
int rounds() {
  const char* const text = std::getenv("VSA_NUMBER_ROUNDS");
  return text == nullptr ? 1 : std::max(1, std::atoi(text));
}

TEST(NumberList, RandomReals) {
  for (int round = 0; round < rounds(); ++round) {
    const auto seed = static_cast<uint64_t>(round);
    checkRandomLists<float>(1000 + seed, 10000);
    checkRandomLists<double>(500000 + seed, 10000);
    if (HasFatalFailure()) return;
  }
}

TEST(NumberList, RandomIntegers) {
  for (int round = 0; round < rounds(); ++round) {
    uint64_t seed = 900000 + static_cast<uint64_t>(round);
    forTypes<signed char, unsigned char, short, unsigned short, int, unsigned int, long long,
             unsigned long long>(
        [&](auto type) { checkRandomLists<decltype(type)>(seed += 1000000, 1500); });
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace zn
