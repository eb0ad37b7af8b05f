// How two lists of values differ: buffers, arrays of values, and tuples.
#pragma once

#include <cstdint>
#include <optional>

#include <vsa/view.h>
#include "tools/vsa/diff/tolerance.h"

namespace vsa_tools {

/// The result of a comparison. Elements are compared up to the shorter length.
struct ListDifference {
  std::uint64_t countA = 0, countB = 0;
  /// The number of elements that differ.
  std::uint64_t differing = 0;
  /// The index of the first element that differs, if there is one.
  std::uint64_t first = 0;
  /// The largest distance between two numbers, and its element. Not set if the elements are not
  /// numbers, or if no difference is numeric.
  std::optional<double> largestDeviation;
  std::uint64_t largestAt = 0;

  bool isSame() const { return countA == countB && differing == 0; }
};

/// Compares two buffers with the same type of elements.
ListDifference compareBuffers(const vsa::BufferView& a, const vsa::BufferView& b,
                              const Tolerance& tolerance);

/// Whether the array's elements are values: numbers, tuples, strings.
bool isValueArray(vsa::InputView array);

/// Compares two arrays with values of the same type.
ListDifference compareArrays(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance);

/// Compares the numbers of two tuples of the same type.
ListDifference compareTuples(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance);

/// Whether two values of the same type are equal. The type is Bool, Int, UInt, Real, String or a
/// tuple.
bool isSameValue(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance);

}  // namespace vsa_tools
