// Converts a number to its shortest text. Internal.
//
// The text of a real has the fewest digits that read back as the same real. Its notation is the one
// that std::to_chars chooses: fixed, unless an exponent makes the text shorter. The exponent has
// neither plus sign nor leading zeros. Examples: 0.5  -0  100  1e5  1.5e-7  16777216  inf  -nan. In
// a list, the reader accepts every such text. A real outside of a list needs a point
// (printRealWithPoint).
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>

namespace zn::numbers {

/// The number of bytes that each function may write at `to`, including unspecified bytes after the
/// text.
inline constexpr std::size_t PRINT_CAPACITY = 48;

/// Writes the text of `value` to `to` and returns its end.
char* printNumber(char* to, float value);
char* printNumber(char* to, double value);

template <std::integral Integer>
char* printNumber(char* to, Integer value) {
  return std::to_chars(to, to + PRINT_CAPACITY, value).ptr;
}

/// The same, but the text of a finite value always has a point: 2.0  1.0e5
char* printRealWithPoint(char* to, double value);

}  // namespace zn::numbers
