// Compares a text that a test makes with a file that contains the expected text.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "tests/support/text.h"

namespace vsa_tests {

/// Returns the part of `shown` around the first difference of two texts.
inline std::string partAtDifference(std::string_view shown, std::string_view other) {
  constexpr std::size_t BEFORE = 200, AFTER = 400;  // bytes
  const auto at = static_cast<std::size_t>(
      std::mismatch(shown.begin(), shown.end(), other.begin(), other.end()).first - shown.begin());
  return std::string(shown.substr(at - std::min(at, BEFORE), BEFORE + AFTER));
}

/// Fails if the file has another text. If the environment variable VSA_ACCEPT is set, writes the
/// text to the file instead, so that `git diff` shows the change.
inline void expectContent(const std::filesystem::path& file, std::string_view found) {
  if (std::getenv("VSA_ACCEPT") != nullptr) {
    std::ofstream(file, std::ios::binary) << found;
    return;
  }
  const std::string expected = contentOf(file);
  if (expected == found) return;
  ADD_FAILURE() << file.filename() << " has at the first difference:\n"
                << partAtDifference(expected, found) << "\n\nfound:\n"
                << partAtDifference(found, expected)
                << "\n\n`./dev accept --printed` rewrites the file.";
}

}  // namespace vsa_tests
