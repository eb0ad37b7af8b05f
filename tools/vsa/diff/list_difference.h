// Comparison of two lists of values: buffers, arrays of values, and tuples.
#pragma once

#include <cstdint>
#include <optional>

#include <vsa/view.h>
#include "tools/vsa/diff/tolerance.h"

namespace vsa_tools {

/// The result of a comparison. Only indices that both lists have are compared.
struct ListDifference {
  std::uint64_t countA = 0, countB = 0;
  /// The number of elements that differ, or of components of a tuple.
  std::uint64_t differing = 0;
  /// The index of the first element that differs. Valid only if `differing` is not 0.
  std::uint64_t first = 0;
  /// The largest distance between two numbers, and the index of their element. Only pairs of
  /// numbers that the tolerance does not accept count. Not set if there are none, or if each of
  /// them has a NaN.
  std::optional<double> largestDeviation;
  std::uint64_t largestAt = 0;

  bool isSame() const { return countA == countB && differing == 0; }
};

/// Compares two buffers with the same element type.
ListDifference compareBuffers(const vsa::BufferView& a, const vsa::BufferView& b,
                              const Tolerance& tolerance);

/// Returns whether the elements of the array are values: booleans, numbers, tuples or strings.
bool isValueArray(vsa::InputView array);

/// Compares two arrays whose values have the same type.
ListDifference compareArrays(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance);

/// Compares the numbers of two tuples of the same type.
ListDifference compareTuples(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance);

/// Returns whether two values of the same type are equal. The type must be Bool, Int, UInt, Real,
/// String or a tuple.
bool isSameValue(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance);

}  // namespace vsa_tools
