// Long tests run a sample of their steps in the test suite, and all steps on request.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace vsa_tests {

/// A test runs every n-th of its steps. Returns n: the environment variable VSA_STRESS_STEP if it
/// is set, otherwise `defaultStep`. 1 runs all steps.
inline std::size_t sampleStep(std::size_t defaultStep) {
  const char* const step = std::getenv("VSA_STRESS_STEP");
  if (step == nullptr) return defaultStep;
  return std::max<std::size_t>(1, std::strtoul(step, nullptr, 10));
}

}  // namespace vsa_tests
