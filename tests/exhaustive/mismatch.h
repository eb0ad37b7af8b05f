// mismatch(): reports a text that was read or printed wrongly.
#pragma once

#include <cstdio>
#include <string_view>

#include "tests/exhaustive/survey.h"

namespace vsa_tests {

/// Counts a mismatch. Prints it if it is one of the first 20 mismatches of the survey.
inline void mismatch(Survey& survey, std::string_view text, const char* how) {
  constexpr std::uint64_t MAX_PRINTED = 20;
  if (++survey.mismatches > MAX_PRINTED) return;
  std::printf("MISMATCH %s: %.*s\n", how, static_cast<int>(text.size()), text.data());
}

}  // namespace vsa_tests
