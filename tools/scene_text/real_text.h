// Numbers as the shortest text that reads back to the same value.
#pragma once

#include <cstddef>

namespace vsa_tools {

/// Enough for any number that these functions write.
constexpr size_t NUMBER_TEXT_CAPACITY = 32;

/// Writes `value` to `to`, which holds NUMBER_TEXT_CAPACITY characters, and returns the length; no
/// NUL follows. Integral values have no point ("1"), minus zero is "-0.0"; "nan", "inf" and "-inf"
/// stand as words.
size_t realText(double value, char* to);

/// The same for a `float`: the shortest text that reads back to this float, often shorter than its
/// double's.
size_t realText(float value, char* to);

}  // namespace vsa_tools
