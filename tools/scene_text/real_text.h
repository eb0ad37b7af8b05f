// Floating-point numbers as short text that reads back to the same value.
#pragma once

#include <cstddef>

namespace vsa_tools {

/// The length that suffices for each text that these functions write, and for any 64-bit integer.
constexpr size_t NUMBER_TEXT_CAPACITY = 32;

/// Writes the shortest text of `value` to `to`, which has a capacity of NUMBER_TEXT_CAPACITY
/// characters, without a terminating NUL, and returns the length. The text may have no decimal
/// point ("1", "1e+22"). Minus zero is "-0.0". Non-finite values are "nan" (without a sign), "inf"
/// and "-inf".
size_t realText(double value, char* to);

/// Does the same for a `float`. The text is often shorter than the text of the same value as a
/// `double`.
size_t realText(float value, char* to);

}  // namespace vsa_tools
