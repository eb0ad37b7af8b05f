// The powers of ten for the shortest decimal of a double. Internal.
#pragma once

#include "foundation/base/wide_multiply.h"

namespace zn::numbers {

/// The smallest and the largest exponent in the table: those that doubles need.
inline constexpr int MIN_CEILED_POWER = -292;
inline constexpr int MAX_CEILED_POWER = 324;

/// The leading 128 bits of each power of ten, rounded up; the first bit of each row is a one. The
/// table consists of literals, because compilers limit constant evaluation: computing it takes
/// about ten million steps.
extern const detail::Wide POWERS_OF_TEN_CEILED[MAX_CEILED_POWER - MIN_CEILED_POWER + 1];

}  // namespace zn::numbers
