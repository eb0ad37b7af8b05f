// Reads the texts of tests/regressions from each kind of source. Each text NAME.vsa once showed the
// bug in its name. NAME.expect is the expected outcome, in the format of the cases.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/case_run.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;

const fs::path FOLDER = fs::path(VSA_TEST_DIR) / "regressions";

/// The names of the files with that extension, without it, in order.
std::vector<std::string> namesOf(const std::string& extension) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(FOLDER)) {
    if (entry.path().extension() == extension) names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class RegressionTest : public testing::TestWithParam<std::string> {};

TEST_P(RegressionTest, ReadsTheSameFromEverySource) {
  const std::string text = contentOf(FOLDER / (GetParam() + ".vsa"));
  const std::string expected = comparable(contentOf(FOLDER / (GetParam() + ".expect")));
  EXPECT_EQ(expected, comparable(outcomeOf(text, Source::String)));
  EXPECT_EQ(expected, comparable(outcomeOf(text, Source::File)));
  EXPECT_EQ(expected, comparable(outcomeOf(text, Source::ByteByByte)));
}

INSTANTIATE_TEST_SUITE_P(Regressions, RegressionTest, testing::ValuesIn(namesOf(".vsa")),
                         [](const auto& text) { return text.param; });

TEST(RegressionFolderTest, EveryTextHasItsExpectation) {
  EXPECT_FALSE(namesOf(".vsa").empty());
  EXPECT_EQ(namesOf(".vsa"), namesOf(".expect"));
}

}  // namespace

}  // namespace vsa_tests
