// sampleStep(): lets long tests run a sample of their steps in the test suite, and all steps on
// request.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace vsa_tests {

/// Returns n for tests that run every n-th of their steps. It is the environment variable
/// VSA_STRESS_STEP if that is set, but at least 1, otherwise `defaultStep`. 1 runs all steps.
inline std::size_t sampleStep(std::size_t defaultStep) {
  const char* const step = std::getenv("VSA_STRESS_STEP");
  if (step == nullptr) return defaultStep;
  return std::max<std::size_t>(1, std::strtoul(step, nullptr, 10));
}

}  // namespace vsa_tests
