// Reads the texts of tests/regressions from each kind of source. Each text NAME.vsa once showed the
// bug in its name. NAME.expect is the expected outcome, in the format of the cases. The tests of
// all other fixed bugs are listed in README.md of that folder, and must exist.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <vector>

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

/// "SUITE.NAME" for every match of `pattern`, whose groups are the suite and the name.
std::set<std::string> testsIn(const std::string& text, const std::regex& pattern) {
  std::set<std::string> tests;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at) {
    tests.insert((*at)[1].str() + '.' + (*at)[2].str());
  }
  return tests;
}

/// The tests that the sources below tests/ define.
std::set<std::string> definedTests() {
  const std::regex definition(R"(\nTEST(?:_F|_P)?\((\w+), (\w+)\))");
  std::set<std::string> tests;
  for (const auto& entry : fs::recursive_directory_iterator(VSA_TEST_DIR)) {
    if (entry.path().extension() != ".cpp") continue;
    tests.merge(testsIn(contentOf(entry.path()), definition));
  }
  return tests;
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

TEST(RegressionFolderTest, EveryTestOfTheTableExists) {
  const std::regex row(R"(\n\| .* \| `(\w+)\.(\w+)` \|)");
  const std::set<std::string> listed = testsIn(contentOf(FOLDER / "README.md"), row);
  const std::set<std::string> defined = definedTests();
  EXPECT_FALSE(listed.empty());
  for (const std::string& test : listed) EXPECT_TRUE(defined.contains(test)) << test;
}

}  // namespace

}  // namespace vsa_tests
