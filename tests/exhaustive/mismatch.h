// How a survey tells of a text that was read wrongly.
#pragma once

#include <cstdio>
#include <string_view>

#include "tests/exhaustive/survey.h"

namespace vsa_tests {

/// Counts a mismatch, and prints the first ones of a survey.
inline void mismatch(Survey& survey, std::string_view text, const char* how) {
  constexpr std::uint64_t SHOWN = 20;
  if (++survey.mismatches > SHOWN) return;
  std::printf("MISMATCH %s: %.*s\n", how, static_cast<int>(text.size()), text.data());
}

}  // namespace vsa_tests
