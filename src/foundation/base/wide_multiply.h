// Multiplies two 64-bit numbers. The product has 128 bits. Internal.
#pragma once

#include <cstdint>

#include "foundation/base/sanitizers.h"

namespace zn::detail {

/// An unsigned number of 128 bits.
struct Wide {
  std::uint64_t high;
  std::uint64_t low;
};

/// Returns the product a * b with all its 128 bits.
VSA_WRAPS_AROUND constexpr Wide multiply(std::uint64_t a, std::uint64_t b) noexcept {
#if defined(__SIZEOF_INT128__)
  __extension__ using Wide128 = unsigned __int128;
  const Wide128 product = static_cast<Wide128>(a) * b;
  return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
  const std::uint64_t aLow = a & 0xFFFFFFFF, aHigh = a >> 32;
  const std::uint64_t bLow = b & 0xFFFFFFFF, bHigh = b >> 32;
  const std::uint64_t low = aLow * bLow;
  const std::uint64_t middle = aHigh * bLow + (low >> 32);
  const std::uint64_t other = aLow * bHigh + (middle & 0xFFFFFFFF);
  return {aHigh * bHigh + (middle >> 32) + (other >> 32), (other << 32) | (low & 0xFFFFFFFF)};
#endif
}

}  // namespace zn::detail
