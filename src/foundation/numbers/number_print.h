// Converts a number to its shortest text. Internal.
//
// The text of a real has the smallest number of digits from which the reader gets the same real.
// Its notation is the notation that std::to_chars selects: fixed, unless the text is shorter with
// an exponent that has a sign and at least two digits. The exponent is then written without a plus
// sign and without leading zeros. Examples: 0.5  -0  100  1e5 1.5e-7  16777216  inf  -nan.
//
// The reader accepts each of these texts in a list. Outside of a list, a finite real requires a
// point (see printRealWithPoint).
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>

namespace zn::numbers {

/// The maximum number of bytes that each function writes at `to`. The bytes after the text have
/// unspecified values.
inline constexpr std::size_t PRINT_CAPACITY = 48;

/// Writes the text of `value` to `to`. Returns the end of the text.
char* printNumber(char* to, float value);
char* printNumber(char* to, double value);

template <std::integral Integer>
char* printNumber(char* to, Integer value) {
  return std::to_chars(to, to + PRINT_CAPACITY, value).ptr;
}

/// Like printNumber, but the text of a finite value always has a point. Examples: 2.0  1.0e5
char* printRealWithPoint(char* to, double value);

}  // namespace zn::numbers
