// Decimal texts that are hard to round. They are exact middles between two adjacent reals and texts
// close to them, texts with many digits, texts with 15 to 19 digits, subnormals, and texts at the
// ends of the range. MPFR, with the precision and the exponents of the target type, computes the
// expected values.
#include <gmp.h>
#include <mpfr.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "foundation/numbers/number_list.h"
#include "foundation/numbers/number_text.h"
#include "tests/exhaustive/mismatch.h"
#include "tests/exhaustive/survey.h"

namespace vsa_tests {

namespace {

using Random = std::mt19937_64;

std::int64_t between(Random& random, std::int64_t min, std::int64_t max) {
  const auto span = static_cast<std::uint64_t>(max - min) + 1;
  return min + static_cast<std::int64_t>(random() % span);
}

std::string randomDigits(Random& random, std::int64_t count) {
  std::string digits;
  for (std::int64_t i = 0; i < count; ++i) digits += static_cast<char>('0' + random() % 10);
  return digits;
}

/// An integer of any size, implemented by GMP.
class BigInteger {
 public:
  explicit BigInteger(std::uint64_t value) { mpz_init_set_ui(value_, value); }
  BigInteger(const BigInteger&) = delete;
  BigInteger& operator=(const BigInteger&) = delete;
  ~BigInteger() { mpz_clear(value_); }

  void timesPowerOfTwo(unsigned long power) { mpz_mul_2exp(value_, value_, power); }

  void timesPowerOfFive(unsigned long power) {
    mpz_t factor;
    mpz_init(factor);
    mpz_ui_pow_ui(factor, 5, power);
    mpz_mul(value_, value_, factor);
    mpz_clear(factor);
  }

  std::string digits() const {
    std::string text(mpz_sizeinbase(value_, 10) + 1, '\0');
    mpz_get_str(text.data(), 10, value_);
    text.resize(text.find('\0'));
    return text;
  }

 private:
  mpz_t value_;
};

struct Decimal {
  std::string digits;
  std::int64_t exponent = 0;
};

/// Returns all digits of mantissa * 2^exponent.
Decimal exactDecimal(std::uint64_t mantissa, std::int64_t exponent) {
  BigInteger digits(mantissa);
  if (exponent >= 0) {
    digits.timesPowerOfTwo(static_cast<unsigned long>(exponent));
    return {digits.digits(), 0};
  }
  digits.timesPowerOfFive(static_cast<unsigned long>(-exponent));
  return {digits.digits(), exponent};
}

/// A floating-point format. The exponents are for a mantissa that is an integer.
struct Format {
  int mantissaBits;
  int minExponent;
  int maxExponent;
};
constexpr Format DOUBLE{53, -1074, 971};
constexpr Format FLOAT{24, -149, 104};

/// Returns the exact middle between a random real and the next greater one. For the greatest real,
/// it is the middle between that and the next power of two.
Decimal halfWay(Random& random, const Format& format) {
  const std::uint64_t low = std::uint64_t{1} << (format.mantissaBits - 1);
  const std::int64_t exponent = between(random, format.minExponent, format.maxExponent);
  std::uint64_t mantissa = low | (random() & (low - 1));
  const bool isSubnormal = exponent == format.minExponent && random() % 2 == 0;
  if (isSubnormal) mantissa = (random() & (low - 1)) >> (random() % 52);
  if (random() % 16 == 0) mantissa = 2 * low - 1;
  return exactDecimal(2 * mantissa + 1, exponent - 1);
}

/// Makes the decimal slightly smaller: subtracts one unit of the last digit and appends nines.
void stepDown(Random& random, Decimal& decimal) {
  auto digit = decimal.digits.rbegin();
  for (; *digit == '0'; ++digit) *digit = '9';
  --*digit;
  const auto nines = static_cast<std::size_t>(between(random, 1, 30));
  decimal.digits.append(nines, '9');
  decimal.exponent -= static_cast<std::int64_t>(nines);
}

/// Makes the decimal slightly greater: appends zeros and a one.
void stepUp(Random& random, Decimal& decimal) {
  const auto zeros = static_cast<std::size_t>(between(random, 0, 30));
  decimal.digits.append(zeros, '0');
  decimal.digits += '1';
  decimal.exponent -= static_cast<std::int64_t>(zeros) + 1;
}

Decimal nearHalfWay(Random& random, const Format& format) {
  Decimal decimal = halfWay(random, format);
  switch (random() % 3) {
    case 0:
      stepDown(random, decimal);
      break;
    case 1:
      stepUp(random, decimal);
      break;
    default:
      break;
  }
  return decimal;
}

/// Returns a decimal with random digits. Its value is less than 10^max. It is at least 10^(min - 1)
/// unless its first digits are zeros.
Decimal ofOrder(Random& random, std::int64_t digits, std::int64_t min, std::int64_t max) {
  return {randomDigits(random, digits), between(random, min, max) - digits};
}

/// Returns a decimal in or near the range of the subnormal floats, or near the greatest float.
Decimal nearEndOfFloats(Random& random) {
  const std::int64_t digits = between(random, 1, 40);
  return random() % 2 == 0 ? ofOrder(random, digits, -47, -37) : ofOrder(random, digits, 37, 40);
}

Decimal hardDecimal(Random& random) {
  switch (random() % 8) {
    case 0:
    case 1:
      return nearHalfWay(random, DOUBLE);
    case 2:
    case 3:
      return nearHalfWay(random, FLOAT);
    case 4:  // a decimal with many digits
      return ofOrder(random, between(random, 20, 1000), -345, 312);
    case 5:  // a decimal in or near the range of the subnormal doubles
      return ofOrder(random, between(random, 1, 40), -326, -306);
    case 6:  // a decimal near an end of the range of a float
      return nearEndOfFloats(random);
    default:  // a decimal with 15 to 19 digits, which fit into 64 bits
      return ofOrder(random, between(random, 15, 19), -345, 312);
  }
}

/// Returns the decimal as a text with a random sign. The text has an exponent unless it is 0. In
/// half of the texts, a point is before one of the digits.
std::string written(Random& random, const Decimal& decimal) {
  std::string text = random() % 2 == 0 ? "-" : "";
  const auto count = static_cast<std::int64_t>(decimal.digits.size());
  const std::int64_t afterPoint = random() % 2 == 0 ? 0 : between(random, 1, count);
  const auto beforePoint = static_cast<std::size_t>(count - afterPoint);
  text += decimal.digits.substr(0, beforePoint);
  if (afterPoint != 0) text += '.' + decimal.digits.substr(beforePoint);
  const std::int64_t exponent = decimal.exponent + afterPoint;
  if (exponent != 0) text += 'e' + std::to_string(exponent);
  return text;
}

/// Converts texts with MPFR, with the precision and the exponents of a target type.
template <class Real>
class Reference {
 public:
  Reference() { mpfr_init2(value_, std::numeric_limits<Real>::digits); }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;
  ~Reference() { mpfr_clear(value_); }

  Real read(const std::string& text) {
    using Limits = std::numeric_limits<Real>;
    mpfr_set_emin(Limits::min_exponent - Limits::digits + 1);
    mpfr_set_emax(Limits::max_exponent);
    const int rounded = mpfr_strtofr(value_, text.c_str(), nullptr, 10, MPFR_RNDN);
    mpfr_subnormalize(value_, rounded, MPFR_RNDN);
    return static_cast<Real>(mpfr_get_d(value_, MPFR_RNDN));
  }

 private:
  mpfr_t value_;
};

template <class Real>
bool isSame(Real expected, bool accepted, Real found) {
  if (std::isinf(expected)) return !accepted;
  return accepted && found == expected && std::signbit(found) == std::signbit(expected);
}

template <class Real>
void checkAs(const std::string& text, Reference<Real>& reference, Survey& survey) {
  const Real expected = reference.read(text);
  // The byte after a list must be readable. Here, that byte is the terminating NUL.
  const char* const first = text.c_str();
  const char* const last = first + text.size();
  Real found = 0;
  const bool asScalar = zn::realFromText(first, last, found);
  if (!isSame(expected, asScalar, found)) {
    mismatch(survey, text, sizeof(Real) == 4 ? "as a scalar float" : "as a scalar double");
  }
  found = 0;
  const bool inList = zn::readNumberRun(first, last, &found, 1).count == 1;
  if (!isSame(expected, inList, found)) {
    mismatch(survey, text, sizeof(Real) == 4 ? "in a list of floats" : "in a list of doubles");
  }
}

}  // namespace

Survey surveyHardDecimals(std::uint64_t count, std::uint64_t seed) {
  Survey survey;
  Random random(seed);
  Reference<double> asDouble;
  Reference<float> asFloat;
  for (; survey.texts < count; ++survey.texts) {
    const std::string text = written(random, hardDecimal(random));
    checkAs(text, asDouble, survey);
    checkAs(text, asFloat, survey);
  }
  return survey;
}

}  // namespace vsa_tests
