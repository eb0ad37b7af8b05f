// Converts texts to numbers. One pass checks the syntax character by character and collects the
// digits.
//
// number_decimal converts common reals. All other finite reals (for example with more than 19
// digits or a large exponent) are rewritten as a decimal of bounded length, unless the exponent and
// the number of digits already show that they overflow or become zero. std::from_chars converts
// that decimal and rounds exactly. from_chars returns the same error for overflow and underflow,
// and the decimal order shows which of the two occurred.
#include "foundation/numbers/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <system_error>
#include <type_traits>

#include "foundation/base/white_space.h"
#include "foundation/numbers/number_decimal.h"

namespace zn {
namespace {

using numbers::MAX_DIGITS;

/// The digits of an exponent are ignored as soon as its value has reached this number. A larger
/// exponent has the same effect, because no text has enough digits to compensate for it.
constexpr int64_t MAX_EXPONENT = 100'000'000'000'000'000;

/// The characters that have not been read.
struct Text {
  const char* at;
  const char* end;

  bool isAtEnd() const { return at == end; }
  bool startsWithDigit() const { return at != end && *at >= '0' && *at <= '9'; }

  /// Skips the next character if it is `one` or `other`. Returns whether it was skipped.
  bool skip(char one, char other) {
    if (at == end || (*at != one && *at != other)) return false;
    ++at;
    return true;
  }

  int readDigit() { return *at++ - '0'; }
};

Text withoutWhiteSpace(const char* first, const char* last) {
  const std::string_view kept = detail::trimmed({first, static_cast<size_t>(last - first)});
  return {kept.data(), kept.data() + kept.size()};
}

/// Reads ["+" | "-"]. Returns true for "-".
bool readSign(Text& text) {
  if (text.skip('-', '-')) return true;
  text.skip('+', '+');
  return false;
}

/// Reads digit {digit}. Ignores the digits after the value has reached MAX_EXPONENT, so the result
/// is less than ten times MAX_EXPONENT. Returns false if there is no digit.
bool readExponent(Text& text, int64_t& exponent) {
  if (!text.startsWithDigit()) return false;
  exponent = 0;
  while (text.startsWithDigit()) {
    const int digit = text.readDigit();
    if (exponent < MAX_EXPONENT) exponent = exponent * 10 + digit;
  }
  return true;
}

/// Computes value * 10 + digit. Returns false if the result does not fit in 64 bits.
bool appendDigit(uint64_t& value, unsigned digit) {
  constexpr uint64_t MAX = std::numeric_limits<uint64_t>::max();
  if (value >= MAX / 10 && (value > MAX / 10 || digit > MAX % 10)) return false;
  value = value * 10 + digit;
  return true;
}

struct Magnitude {
  bool negative = false;
  uint64_t value = 0;
};

/// Parses the production `integer` of the grammar in number_text.h. Returns false for another form,
/// and if the magnitude does not fit in 64 bits. Does not check the range of the target type.
bool parseMagnitude(Text text, Magnitude& out) {
  out.negative = readSign(text);
  if (!text.startsWithDigit()) return false;
  while (text.startsWithDigit()) {
    if (!appendDigit(out.value, static_cast<unsigned>(text.readDigit()))) return false;
  }
  int64_t exponent = 0;
  if (text.skip('e', 'E')) {
    text.skip('+', '+');
    if (!readExponent(text, exponent)) return false;
  }
  text.skip('u', 'u');
  if (!text.isAtEnd()) return false;
  for (; exponent > 0 && out.value != 0; --exponent) {
    if (!appendDigit(out.value, 0)) return false;
  }
  return true;
}

/// A finite real. If `isExact` is true, its magnitude is `digits` * 10^`exponent`. Otherwise more
/// digits follow these 19 digits, and not all of them are zero.
struct Decimal {
  bool negative = false;
  bool isExact = true;
  // The number of digits in `digits`, from the first digit that is not zero: at most MAX_DIGITS.
  int digitCount = 0;
  uint64_t digits = 0;
  int64_t exponent = 0;
  Text mantissa{};  // The digits and the point.

  void add(int digit, bool afterPoint) {
    if (digitCount < MAX_DIGITS) {
      digits = digits * 10 + static_cast<unsigned>(digit);
      digitCount += digits != 0 ? 1 : 0;
      exponent -= afterPoint ? 1 : 0;
    } else {
      isExact = isExact && digit == 0;
      exponent += afterPoint ? 0 : 1;
    }
  }
};

/// Parses the first alternative of the production `real` in number_text.h. The sign has been read.
bool parseDecimal(Text text, Decimal& out) {
  const char* const first = text.at;
  bool hasDigit = text.startsWithDigit();
  while (text.startsWithDigit()) out.add(text.readDigit(), false);
  if (text.skip('.', '.')) {
    hasDigit = hasDigit || text.startsWithDigit();
    while (text.startsWithDigit()) out.add(text.readDigit(), true);
  }
  if (!hasDigit) return false;
  out.mantissa = {first, text.at};
  if (text.skip('e', 'E')) {
    const bool negative = readSign(text);
    int64_t written;
    if (!readExponent(text, written)) return false;
    out.exponent += negative ? -written : written;
  }
  text.skip('f', 'F');
  return text.isAtEnd();
}

/// Parses "inf" or "nan" in any letter case without a sign. Returns false for any other text.
template <class Real>
bool parseInfinityOrNan(Text text, Real& out) {
  if (text.end - text.at != 3) return false;
  const auto is = [&](const char* lower) {
    return (text.at[0] | 0x20) == lower[0] && (text.at[1] | 0x20) == lower[1] &&
           (text.at[2] | 0x20) == lower[2];
  };
  if (is("inf")) {
    out = std::numeric_limits<Real>::infinity();
    return true;
  }
  if (!is("nan")) return false;
  out = std::numeric_limits<Real>::quiet_NaN();
  return true;
}

/// A text with an exponent and up to 781 digits, which includes all digits that can influence a
/// double: at most 767 digits can. If digits other than 0 follow the stored digits, the last stored
/// digit is set to 1.
class PlainDecimal {
 public:
  /// `order` is the decimal order of the value: 10^(order - 1) <= value < 10^order.
  PlainDecimal(Text mantissa, int64_t order) {
    while (!mantissa.isAtEnd() && count_ <= MAX_SIGNIFICANT) add(*mantissa.at++);
    char* const digitsEnd = text_ + count_;
    *digitsEnd = 'e';
    end_ = std::to_chars(digitsEnd + 1, text_ + sizeof text_, order - count_).ptr;
    for (; !mantissa.isAtEnd(); ++mantissa.at) {
      if (*mantissa.at != '.' && *mantissa.at != '0') digitsEnd[-1] = '1';
    }
  }

  const char* begin() const { return text_; }
  const char* end() const { return end_; }

 private:
  static constexpr int MAX_SIGNIFICANT = 780;

  void add(char c) {
    if (c == '.' || (c == '0' && count_ == 0)) return;
    text_[count_++] = c;
  }

  int count_ = 0;
  char text_[MAX_SIGNIFICANT + 32];
  char* end_;
};

/// Converts a decimal that is not zero. The only rounding is the rounding to `Real`. Sets `out` to
/// zero if the number is too small. Returns false if the number overflows.
template <class Real>
bool realFromLongDecimal(const Decimal& decimal, Real& out) {
  constexpr int64_t MAX_ORDER = 400;  // No float or double has a larger order.
  const int64_t order = decimal.exponent + decimal.digitCount;
  if (order > MAX_ORDER) return false;
  out = 0;
  if (order < -MAX_ORDER) return true;
  const PlainDecimal plain(decimal.mantissa, order);
  Real value = 0;
  const std::errc error = std::from_chars(plain.begin(), plain.end(), value).ec;
  // If the number is too small, `out` is zero.
  if (error == std::errc::result_out_of_range) return order <= 0;
  if (std::isinf(value)) return false;
  out = value;
  return true;
}

template <class Real>
bool parseReal(Text text, Real& out) {
  Decimal decimal;
  decimal.negative = readSign(text);
  Real value;
  if (parseDecimal(text, decimal)) {
    const bool isDecided =
        decimal.isExact && numbers::realFromDecimal(decimal.digits, decimal.exponent, value);
    if (!isDecided && !realFromLongDecimal(decimal, value)) return false;
  } else if (!parseInfinityOrNan(text, value)) {
    return false;
  }
  out = numbers::withSign(value, decimal.negative);
  return true;
}

}  // namespace

template <class Integer>
bool integerFromText(const char* first, const char* last, Integer& out) {
  constexpr auto MAX = static_cast<uint64_t>(std::numeric_limits<Integer>::max());
  Magnitude magnitude;
  if (!parseMagnitude(withoutWhiteSpace(first, last), magnitude)) return false;
  if (!magnitude.negative) {
    if (magnitude.value > MAX) return false;
    out = static_cast<Integer>(magnitude.value);
    return true;
  }
  if (std::is_unsigned_v<Integer> || magnitude.value > MAX + 1) return false;
  // The smallest integer has no positive counterpart. Therefore one is subtracted before the
  // negation and one after it.
  const int64_t value = magnitude.value == 0 ? 0 : -static_cast<int64_t>(magnitude.value - 1) - 1;
  out = static_cast<Integer>(value);
  return true;
}

bool realFromText(const char* first, const char* last, float& out) {
  return parseReal(withoutWhiteSpace(first, last), out);
}

bool realFromText(const char* first, const char* last, double& out) {
  return parseReal(withoutWhiteSpace(first, last), out);
}

template bool integerFromText(const char*, const char*, signed char&);
template bool integerFromText(const char*, const char*, unsigned char&);
template bool integerFromText(const char*, const char*, short&);
template bool integerFromText(const char*, const char*, unsigned short&);
template bool integerFromText(const char*, const char*, int&);
template bool integerFromText(const char*, const char*, unsigned int&);
template bool integerFromText(const char*, const char*, long&);
template bool integerFromText(const char*, const char*, unsigned long&);
template bool integerFromText(const char*, const char*, long long&);
template bool integerFromText(const char*, const char*, unsigned long long&);

}  // namespace zn
