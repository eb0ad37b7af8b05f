// How much of a long test is run: a sample in the suite, the whole by hand.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace vsa_tests {

/// Every how-many-th of its steps a test takes: `usual`, or what VSA_ROBUST_EVERY says (1: all).
inline std::size_t sampleStep(std::size_t usual) {
  const char* const asked = std::getenv("VSA_ROBUST_EVERY");
  if (asked == nullptr) return usual;
  return std::max<std::size_t>(1, std::strtoul(asked, nullptr, 10));
}

}  // namespace vsa_tests
