// From a number to its shortest text. Internal.
//
// The text of a real has the fewest digits that read back as the same real, and of the fixed and
// the exponent notation the one that std::to_chars chooses: fixed unless the exponent makes the
// text shorter. The exponent has neither plus sign nor leading zeros. Examples: 0.5  -0  100  1e5
// 1.5e-7  16777216  inf  -nan. As an element of a list every such text reads back; a real that
// stands alone needs a point (printRealWithPoint).
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>

namespace zn::numbers {

/// The room that each of the functions needs at `to`; they may write anything there, behind the
/// text too.
inline constexpr std::size_t PRINT_CAPACITY = 48;

/// Writes the text of `value` to `to` and returns its end.
char* printNumber(char* to, float value);
char* printNumber(char* to, double value);

template <std::integral Integer>
char* printNumber(char* to, Integer value) {
  return std::to_chars(to, to + PRINT_CAPACITY, value).ptr;
}

/// The same with a point in the text of a finite value: 2.0  1.0e5
char* printRealWithPoint(char* to, double value);

}  // namespace zn::numbers
