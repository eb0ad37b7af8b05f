// Tolerance: decides whether two numbers count as equal.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <type_traits>

namespace vsa_tools {

/// Returns the distance between two numbers. The distance between integers is computed exactly and
/// then rounded.
template <class Number>
double deviation(Number a, Number b) {
  if constexpr (std::is_floating_point_v<Number>) {
    return std::fabs(static_cast<double>(a) - static_cast<double>(b));
  } else {
    using Unsigned = std::make_unsigned_t<Number>;
    const auto low = static_cast<Unsigned>(std::min(a, b));
    const auto high = static_cast<Unsigned>(std::max(a, b));
    return static_cast<double>(static_cast<Unsigned>(high - low));
  }
}

/// Returns whether all bits of two numbers are the same.
template <class Number>
bool hasSameBits(Number a, Number b) {
  if constexpr (std::is_floating_point_v<Number>) {
    using Bits = std::conditional_t<sizeof(Number) == 4, std::uint32_t, std::uint64_t>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
  } else {
    return a == b;
  }
}

/// The maximum distances of two numbers that count as equal: one of them suffices. If neither is
/// set, all bits must be the same, so that 0 and -0 differ. If one is set, all NaN are equal, and
/// an infinity is equal only to itself.
struct Tolerance {
  std::optional<double> absolute;
  /// The maximum distance as a fraction of the greater magnitude of both numbers.
  std::optional<double> relative;

  bool isExact() const { return !absolute && !relative; }

  template <class Number>
  bool accepts(Number a, Number b) const {
    if (hasSameBits(a, b)) return true;
    if (isExact()) return false;
    const double distance = deviation(a, b);
    if (std::isnan(distance)) return std::isnan(double(a)) && std::isnan(double(b));
    if (std::isinf(distance)) return false;
    const double magnitude = std::fmax(std::fabs(double(a)), std::fabs(double(b)));
    return (absolute && distance <= *absolute) || (relative && distance <= *relative * magnitude);
  }
};

}  // namespace vsa_tools
