// Computes tables of powers of ten at compile time. Internal.
//
// A row contains the leading 128 bits of 10^exponent. These are the leading bits of 5^exponent,
// because the factor 2^exponent changes only the place of the point.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "foundation/base/wide_multiply.h"

namespace zn::numbers {

namespace powers_detail {

/// An unsigned number, with the lowest 32 bits first.
using Limbs = std::array<std::uint32_t, 28>;

constexpr void multiplyByFive(Limbs& number) {
  std::uint64_t carry = 0;
  for (std::uint32_t& limb : number) {
    carry += std::uint64_t{limb} * 5;
    limb = static_cast<std::uint32_t>(carry);
    carry >>= 32;
  }
}

constexpr void divideByFive(Limbs& number) {
  std::uint64_t rest = 0;
  for (std::size_t i = number.size(); i-- > 0;) {
    rest = rest << 32 | number[i];
    number[i] = static_cast<std::uint32_t>(rest / 5);
    rest %= 5;
  }
}

/// Returns the leading 128 bits of a number of at least 129 bits, rounded up. `isExact` is false if
/// the number is a quotient without its fraction.
constexpr detail::Wide leadingBitsCeiled(const Limbs& number, bool isExact) {
  std::size_t top = number.size() - 1;
  while (number[top] == 0) --top;
  const int zeros = std::countl_zero(number[top]);
  // Returns the two limbs that begin `zeros` bits below the start of limb `i`.
  const auto twoLimbs = [&](std::size_t i) {
    const std::uint64_t upper = std::uint64_t{number[i]} << 32 | number[i - 1];
    return upper << zeros | std::uint64_t{number[i - 2]} << zeros >> 32;
  };
  detail::Wide bits{twoLimbs(top), twoLimbs(top - 2)};
  isExact = isExact && number[top - 4] << zeros == 0;
  for (std::size_t i = 0; i < top - 4; ++i) isExact = isExact && number[i] == 0;
  if (!isExact && ++bits.low == 0) ++bits.high;
  return bits;
}

}  // namespace powers_detail

/// Returns the leading 128 bits of each power of ten from 10^MIN to 10^MAX, rounded up. The first
/// bit of each row is a one. MIN must be from -292 to 0, and MAX from 0 to 324.
///
/// One division or multiplication by five per row takes few enough steps for the limits of the
/// compilers. The divisions are exact enough: floor(floor(x / 5) / 5) is floor(x / 25).
template <int MIN, int MAX>
constexpr auto powersOfTenCeiled() {
  static_assert(MIN >= -292 && MIN <= 0 && MAX >= 0 && MAX <= 324);
  std::array<detail::Wide, MAX - MIN + 1> table{};
  powers_detail::Limbs power{};
  power[4] = 1;  // 2^128, so that each power has at least 129 bits
  for (std::size_t row = -MIN; row < table.size(); ++row) {
    table[row] = powers_detail::leadingBitsCeiled(power, true);
    powers_detail::multiplyByFive(power);
  }
  powers_detail::Limbs reciprocal{};
  reciprocal.back() = 1;
  for (std::size_t row = -MIN; row-- > 0;) {
    powers_detail::divideByFive(reciprocal);
    table[row] = powers_detail::leadingBitsCeiled(reciprocal, false);
  }
  return table;
}

}  // namespace zn::numbers
