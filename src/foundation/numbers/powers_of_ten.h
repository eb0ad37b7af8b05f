// The powers of ten for the conversion of doubles to their shortest decimal. Internal.
#pragma once

#include "foundation/base/wide_multiply.h"

namespace zn::numbers {

/// The smallest and the largest exponent in the table. Doubles require no other exponents.
inline constexpr int MIN_CEILED_POWER = -292;
inline constexpr int MAX_CEILED_POWER = 324;

/// The leading 128 bits of each power of ten, rounded up. The first bit of each row is a one. The
/// table consists of literals, because compilers limit constant evaluation, and its computation
/// takes about ten million steps.
extern const detail::Wide POWERS_OF_TEN_CEILED[MAX_CEILED_POWER - MIN_CEILED_POWER + 1];

}  // namespace zn::numbers
