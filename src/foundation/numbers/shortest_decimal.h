// Converts a binary real to the shortest decimal from which the reader gets the same real.
// Internal.
//
// The method is Schubfach: R. Giulietti, "The Schubfach way to render doubles" (2020). It considers
// all decimals inside the rounding interval of the real and finds one with the smallest number of
// digits. If there are several, it finds the one nearest to the real. Three products with a power
// of ten determine this decimal exactly, without a loop. The power is from a table, and the
// products are rounded to odd.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "foundation/base/sanitizers.h"
#include "foundation/base/wide_multiply.h"
#include "foundation/numbers/powers_of_ten.h"

namespace zn::numbers {

/// The number digits * 10^exponent. The digits may end in zeros.
template <class Digits>
struct Decimal {
  Digits digits;
  int exponent;
};

/// The range of the exponents of ten that floats require.
inline constexpr int MIN_FLOAT_POWER = -31;
inline constexpr int MAX_FLOAT_POWER = 45;

/// Returns the leading 64 bits of each power of ten, rounded up.
constexpr auto makeFloatPowers() {
  constexpr auto POWERS = powersOfTenCeiled<MIN_FLOAT_POWER, MAX_FLOAT_POWER>();
  std::array<std::uint64_t, POWERS.size()> table{};
  for (std::size_t row = 0; row < table.size(); ++row) {
    table[row] = POWERS[row].high + (POWERS[row].low == 0 ? 0 : 1);
  }
  return table;
}

inline constexpr auto FLOAT_POWERS = makeFloatPowers();

/// The range of the exponents of ten that doubles require.
inline constexpr int MIN_DOUBLE_POWER = -292;
inline constexpr int MAX_DOUBLE_POWER = 324;

/// The leading 128 bits of each power of ten, rounded up.
inline constexpr auto DOUBLE_POWERS = powersOfTenCeiled<MIN_DOUBLE_POWER, MAX_DOUBLE_POWER>();

/// The layout of a type in memory, and its powers of ten.
template <class Real>
struct RealLayout;

template <>
struct RealLayout<float> {
  using Bits = std::uint32_t;
  static constexpr int MANTISSA_BITS = 23;
  static constexpr int EXPONENT_BIAS = 127 + MANTISSA_BITS;
  static constexpr Bits EXPONENT_MASK = 0xFF;

  static std::uint64_t power(int exponent) {
    return FLOAT_POWERS[static_cast<std::size_t>(exponent - MIN_FLOAT_POWER)];
  }

  /// Returns the upper bits of power * factor. `power` is rounded up, so the product has an error.
  /// The lowest bit of the result is also set if the omitted lower bits are greater than this
  /// error.
  VSA_WRAPS_AROUND static Bits roundedToOdd(std::uint64_t power, Bits factor) {
    const detail::Wide product = detail::multiply(power, factor);
    return static_cast<Bits>(product.high) | static_cast<Bits>((product.low >> 32) > 1);
  }
};

template <>
struct RealLayout<double> {
  using Bits = std::uint64_t;
  static constexpr int MANTISSA_BITS = 52;
  static constexpr int EXPONENT_BIAS = 1023 + MANTISSA_BITS;
  static constexpr Bits EXPONENT_MASK = 0x7FF;

  static const detail::Wide& power(int exponent) {
    return DOUBLE_POWERS[static_cast<std::size_t>(exponent - MIN_DOUBLE_POWER)];
  }

  VSA_WRAPS_AROUND static Bits roundedToOdd(const detail::Wide& power, Bits factor) {
    const detail::Wide low = detail::multiply(power.low, factor);
    detail::Wide product = detail::multiply(power.high, factor);
    product.low += low.high;
    product.high += product.low < low.high ? 1 : 0;
    return product.high | static_cast<Bits>(product.low > 1);
  }
};

/// Returns floor(log10(2^exponent)). If `isLowerNearer` is true, returns
/// floor(log10(3/4 * 2^exponent)). log10(2) is about 1262611 / 2^22, and log10(4/3) is about
/// 524031 / 2^22. Exact for the exponents of floats and doubles.
constexpr int floorLog10OfPower(int exponent, bool isLowerNearer) {
  // cppcheck-suppress shiftNegativeLHS ; C++20 defines the shift of a negative number
  return (exponent * 1262611 - (isLowerNearer ? 524031 : 0)) >> 22;
}

/// Returns floor(log2(10^exponent)). 1741647 / 2^19 is about log2(10).
constexpr int floorLog2OfPower(int exponent) {
  // cppcheck-suppress shiftNegativeLHS ; C++20 defines the shift of a negative number
  return (exponent * 1741647) >> 19;
}

/// Returns the shortest decimal of a positive finite real. `bits` are the bits of the real.
template <class Real>
VSA_WRAPS_AROUND inline Decimal<typename RealLayout<Real>::Bits> shortestDecimal(
    typename RealLayout<Real>::Bits bits) {
  using Layout = RealLayout<Real>;
  using Bits = typename Layout::Bits;
  constexpr Bits HIDDEN_BIT = Bits{1} << Layout::MANTISSA_BITS;
  const Bits fraction = bits & (HIDDEN_BIT - 1);
  const Bits biased = (bits >> Layout::MANTISSA_BITS) & Layout::EXPONENT_MASK;
  const Bits mantissa = biased == 0 ? fraction : fraction | HIDDEN_BIT;
  const int exponent = static_cast<int>(biased == 0 ? 1 : biased) - Layout::EXPONENT_BIAS;
  // An integer that fits into the mantissa is its own shortest decimal, except for zeros at its
  // end. The test is one branch. An additional branch on whether the real is below 1 would be
  // unpredictable in a list with reals above and below 1. Converting a double takes 8 ns, and 13 ns
  // with that branch.
  const auto fractionBits = static_cast<unsigned>(-exponent);
  const Bits fractionMask = (Bits{1} << (fractionBits % (8 * sizeof(Bits)))) - 1;
  const bool isInteger =
      (fractionBits <= unsigned{Layout::MANTISSA_BITS}) & ((mantissa & fractionMask) == 0);
  if (isInteger) return {static_cast<Bits>(mantissa >> fractionBits), 0};
  // Below a power of two, the distance between two reals is half of the distance above it. The
  // smallest normal real is an exception: the reals below it have the same distance.
  const bool isLowerNearer = fraction == 0 && biased > 1;
  const int power = floorLog10OfPower(exponent, isLowerNearer);
  const int shift = exponent + floorLog2OfPower(-power) + 1;
  const auto& factor = Layout::power(-power);
  const Bits middle = mantissa * 4;
  const Bits lowerEnd = Layout::roundedToOdd(
      factor, static_cast<Bits>((middle - 2 + (isLowerNearer ? 1 : 0)) << shift));
  const Bits value = Layout::roundedToOdd(factor, static_cast<Bits>(middle << shift));
  const Bits upperEnd = Layout::roundedToOdd(factor, static_cast<Bits>((middle + 2) << shift));
  // The ends of the interval belong to it if a reader rounds them to this real. Ties are rounded to
  // even.
  const Bits isOdd = mantissa & 1;
  const Bits lower = lowerEnd + isOdd;
  const Bits upper = upperEnd - isOdd;

  // Removes the last digit if exactly one decimal with fewer digits is in the interval. Otherwise
  // selects the decimal below or above the real: the one in the interval, or the nearer one if both
  // are in the interval. Has no branches, because they would be unpredictable: converting a float
  // takes 15 ns, and 22 ns with branches.
  const Bits digits = value / 4;
  const Bits shorter = digits / 10;
  const Bits isBelowInside = lower <= shorter * 40 ? 1 : 0;
  const Bits isAboveInside = shorter * 40 + 40 <= upper ? 1 : 0;
  const Bits isDownInside = lower <= digits * 4 ? 1 : 0;
  const Bits isUpInside = digits * 4 + 4 <= upper ? 1 : 0;
  const Bits half = digits * 4 + 2;
  const Bits isNearerUp = value > half - (digits & 1) ? 1 : 0;
  const Bits isOneInside = isDownInside ^ isUpInside;
  const Bits isUp = (isOneInside & isUpInside) | (~isOneInside & isNearerUp);
  const Bits isShorter = (isBelowInside ^ isAboveInside) & (digits >= 10 ? 1 : 0);
  const Bits mask = 0 - isShorter;
  const Bits full = digits + isUp;
  const Bits reduced = shorter + isAboveInside;
  return {static_cast<Bits>((reduced & mask) | (full & ~mask)),
          power + static_cast<int>(isShorter)};
}

}  // namespace zn::numbers
