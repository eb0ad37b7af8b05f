// Tables for the kernels that load sixteen characters. Internal.
#pragma once

#include <cstdint>

namespace zn::numbers {

inline constexpr int BLOCK = 16;  // The number of characters per load.

/// Masks for _mm_shuffle_epi8. They move the first n of sixteen bytes to the end and insert zeros
/// before them. The mask for n begins at RIGHT_ALIGN + n.
alignas(16) inline constexpr int8_t RIGHT_ALIGN[2 * BLOCK] = {
    -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
    0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15};

/// Masks for _mm_shuffle_epi8. bytes[n] removes the n-th byte, counted from the end: bytes[1]
/// removes the last byte. The bytes before the removed byte move up by one, and the first byte
/// becomes zero. bytes[0] removes no byte.
struct PointShuffles {
  alignas(16) int8_t bytes[BLOCK + 1][BLOCK];
};

constexpr PointShuffles makePointShuffles() {
  PointShuffles shuffles{};
  for (int fromEnd = 0; fromEnd <= BLOCK; ++fromEnd) {
    for (int i = 0; i < BLOCK; ++i) {
      const bool moves = fromEnd != 0 && i <= BLOCK - fromEnd;
      shuffles.bytes[fromEnd][i] = static_cast<int8_t>(moves ? i - 1 : i);
    }
  }
  return shuffles;
}

inline constexpr PointShuffles WITHOUT_POINT = makePointShuffles();

/// POINT_DIVISORS[n] is the divisor for the digits of a number whose point is the n-th character
/// from the end. n = 0 means that there is no point.
inline constexpr double POINT_DIVISORS[BLOCK + 1] = {
    1e0, 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

}  // namespace zn::numbers
