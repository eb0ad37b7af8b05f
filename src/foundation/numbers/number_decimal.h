// Converts a decimal, digits * 10^exponent, to the nearest binary real. Internal.
//
// number_text and number_list both call these functions, so that their values are equal bit for
// bit. The functions use two published methods, each for the numbers for which it is exact:
// - W. D. Clinger, "How to Read Floating Point Numbers Accurately" (1990). If a double represents
//   both the digits and the power of ten exactly, one division or multiplication rounds correctly.
// - D. Lemire, "Number Parsing at a Gigabyte per Second" (2021), after an idea of M. Eisel. The
//   product of the digits and the leading 128 bits of a power of five determines the rounding.
//
// If neither method determines the last bit, the functions return false. The caller then converts
// the text exactly with number_text. All functions require the default rounding mode (to nearest).
#pragma once

#include <bit>
#include <cfloat>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "foundation/base/sanitizers.h"
#include "foundation/base/wide_multiply.h"
#include "foundation/numbers/powers_of_ten.h"

namespace zn::numbers {

static_assert(std::numeric_limits<double>::is_iec559 && std::numeric_limits<float>::is_iec559);

/// EXACT_POWERS contains the powers of ten that a double represents exactly. MAX_EXACT_POWER is the
/// largest exponent.
inline constexpr int MAX_EXACT_POWER = 22;
inline constexpr double EXACT_POWERS[MAX_EXACT_POWER + 1] = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// A double represents every integer from 0 to this number exactly.
inline constexpr uint64_t MAX_EXACT_DIGITS = uint64_t{1} << 53;

/// Every number with this many decimal digits fits in 64 bits.
inline constexpr int MAX_DIGITS = 19;

using detail::multiply;
using detail::Wide;

/// The largest exponent in POWERS_OF_FIVE. The table has a row for each exponent from -54 to 54.
inline constexpr int MAX_TABLE_POWER = 54;

constexpr size_t tableRow(int exponent) {
  const int row = exponent + MAX_TABLE_POWER;
  return static_cast<size_t>(row);
}

/// Returns the leading 128 bits of each 5^exponent. The proof of the method requires that a
/// reciprocal is rounded up if its divisor fits in 64 bits, and otherwise down. The other rows are
/// exact.
constexpr auto makePowersOfFive() {
  auto table = powersOfTenCeiled<-MAX_TABLE_POWER, MAX_TABLE_POWER>();
  for (size_t row = 0; row < tableRow(-27); ++row) --table[row].low;
  return table;
}

inline constexpr auto POWERS_OF_FIVE = makePowersOfFive();

/// Computes digits * 10^exponent by Lemire's method. `digits` must not be zero, and |exponent| must
/// be at most MAX_TABLE_POWER. The result is always a normal double. Returns false if the leading
/// 128 bits do not determine the rounding.
VSA_WRAPS_AROUND inline bool doubleByProduct(uint64_t digits, int exponent, double& out) {
  const int zeros = std::countl_zero(digits);
  digits <<= zeros;
  const Wide& power = POWERS_OF_FIVE[tableRow(exponent)];
  Wide product = multiply(digits, power.high);
  if ((product.high & 0x1FF) == 0x1FF) {
    // The first product omits the low bits of the power. With them, a carry might change the bits
    // that determine the rounding.
    const uint64_t carry = multiply(digits, power.low).high;
    product.low += carry;
    if (product.low < carry) ++product.high;
    if (product.low == ~uint64_t{0} && (exponent < -27 || exponent > 55)) return false;
  }
  const int top = static_cast<int>(product.high >> 63);
  // The shift leaves 54 bits: the 53 bits of a double and the rounding bit.
  const int shift = top + 9;
  uint64_t mantissa = product.high >> shift;
  // Rounds an exact half-way case to even. Such a case exists only for exponents from -4 to 23.
  if (product.low <= 1 && exponent >= -4 && exponent <= 23 && (mantissa & 3) == 1 &&
      (mantissa << shift) == product.high) {
    mantissa &= ~uint64_t{1};
  }
  // If the mantissa is now 2^53, the sum in `bits` carries into the exponent.
  mantissa = (mantissa + (mantissa & 1)) >> 1;
  // 217706 / 2^16 is about log2(10).
  // cppcheck-suppress shiftNegativeLHS ; C++20 defines the shift of a negative number
  const int binary = ((217706 * exponent) >> 16) + 63 + top - zeros + 1023;
  const uint64_t bits = (static_cast<uint64_t>(binary - 1) << 52) + mantissa;
  out = std::bit_cast<double>(bits);
  return true;
}

/// Computes the double nearest to digits * 10^exponent. Returns false if the methods do not
/// determine it.
inline bool doubleFromDecimal(uint64_t digits, int64_t exponent, double& out) {
  if (digits == 0) {
    out = 0.0;
    return true;
  }
#if FLT_EVAL_METHOD == 0 || FLT_EVAL_METHOD == 1
  if (digits <= MAX_EXACT_DIGITS && exponent >= -MAX_EXACT_POWER && exponent <= MAX_EXACT_POWER) {
    const double exact = static_cast<double>(digits);
    out = exponent < 0 ? exact / EXACT_POWERS[-exponent] : exact * EXACT_POWERS[exponent];
    return true;
  }
#endif
  if (exponent < -MAX_TABLE_POWER || exponent > MAX_TABLE_POWER) return false;
  return doubleByProduct(digits, static_cast<int>(exponent), out);
}

/// Returns `value` with the sign. `value` must not be negative. Has no branch, because the signs of
/// coordinates are unpredictable. This saves 5 % of the time of the benchmarks nodes and mixed.
inline double withSign(double value, bool negative) {
  return std::bit_cast<double>(std::bit_cast<uint64_t>(value) | (uint64_t{negative} << 63));
}

inline float withSign(float value, bool negative) {
  return std::bit_cast<float>(std::bit_cast<uint32_t>(value) | (uint32_t{negative} << 31));
}

/// Whether a value in the range of the normal floats is exactly half-way between two adjacent
/// floats. For any other value, the result has no meaning. If `value` is the double nearest to a
/// text, the number in the text may be slightly less or greater, so that a half-way value does not
/// determine the float nearest to the text. Any other value in the range determines it.
inline bool isHalfWayBetweenFloats(double value) {
  return (std::bit_cast<uint64_t>(value) & 0x1FFFFFFF) == 0x10000000;
}

/// Computes the float nearest to a text from `value`, the double nearest to the text. `value` must
/// not be negative. Returns false if `value` is half-way between two floats, or if it is neither 0
/// nor in the range of the normal floats.
inline bool floatFromDouble(double value, float& out) {
  if (isHalfWayBetweenFloats(value)) return false;
  if (value != 0.0 && !(value >= FLT_MIN && value <= FLT_MAX)) return false;
  out = static_cast<float>(value);
  return true;
}

/// Computes the double or float nearest to digits * 10^exponent. Returns false if the methods do
/// not determine it.
inline bool realFromDecimal(uint64_t digits, int64_t exponent, double& out) {
  return doubleFromDecimal(digits, exponent, out);
}

inline bool realFromDecimal(uint64_t digits, int64_t exponent, float& out) {
  double value;
  return doubleFromDecimal(digits, exponent, value) && floatFromDouble(value, out);
}

}  // namespace zn::numbers
