// Reads the texts of tests/regressions from each kind of source. The file NAME.vsa once caused the
// bug in its name, and NAME.expect is the expected result in the form of the cases. README.md in
// that folder lists the tests of all other fixed bugs. These tests must exist.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/case_run.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;

const fs::path FOLDER = fs::path(VSA_TEST_DIR) / "regressions";

/// Returns the names of the files with that extension, sorted and without the extension.
std::vector<std::string> namesOf(const std::string& extension) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(FOLDER)) {
    if (entry.path().extension() == extension) names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// Returns the word at `at`, and moves `at` past the word.
std::string takeWord(const std::string& text, std::size_t& at) {
  const std::size_t begin = at;
  while (std::isalnum(static_cast<unsigned char>(text[at])) != 0 || text[at] == '_') ++at;
  return text.substr(begin, at - begin);
}

/// Returns "SUITE.NAME" for each `TEST(SUITE, NAME)`, `TEST_F` and `TEST_P` of a source.
std::set<std::string> testsOf(const std::string& source) {
  std::set<std::string> tests;
  const std::string macro = "\nTEST";
  for (std::size_t at = 0; (at = source.find(macro, at)) != std::string::npos;) {
    at += macro.size();
    takeWord(source, at);  // "_F" or "_P"
    if (source[at] != '(') continue;
    const std::string suite = takeWord(source, ++at);
    if (source.compare(at, 2, ", ") != 0) continue;
    at += 2;
    tests.insert(suite + '.' + takeWord(source, at));
  }
  return tests;
}

/// Returns the names of the TEST, TEST_F and TEST_P tests in the sources below tests/.
std::set<std::string> definedTests() {
  std::set<std::string> tests;
  for (const auto& entry : fs::recursive_directory_iterator(VSA_TEST_DIR)) {
    if (entry.path().extension() == ".cpp") tests.merge(testsOf(contentOf(entry.path())));
  }
  return tests;
}

/// Returns the names in backquotes in the last cells of table rows.
std::set<std::string> listedTests(const std::string& page) {
  std::set<std::string> tests;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("| ") || !line.ends_with("` |")) continue;
    const std::size_t end = line.size() - 3;
    const std::size_t begin = line.rfind('`', end - 1) + 1;
    tests.insert(line.substr(begin, end - begin));
  }
  return tests;
}

class RegressionTest : public testing::TestWithParam<std::string> {};

TEST_P(RegressionTest, ReadsTheSameFromEverySource) {
  const std::string text = contentOf(FOLDER / (GetParam() + ".vsa"));
  const LinkWarnings links = linkWarningsOf(text);
  const std::string expected = comparable(contentOf(FOLDER / (GetParam() + ".expect")), links);
  EXPECT_EQ(expected, comparable(outcomeOf(text, Source::String), links));
  EXPECT_EQ(expected, comparable(outcomeOf(text, Source::File), links));
  EXPECT_EQ(expected, comparable(outcomeOf(text, Source::ByteByByte), links));
}

INSTANTIATE_TEST_SUITE_P(Regressions, RegressionTest, testing::ValuesIn(namesOf(".vsa")),
                         [](const auto& text) { return text.param; });

TEST(RegressionFolderTest, EveryTextHasItsExpectation) {
  EXPECT_FALSE(namesOf(".vsa").empty());
  EXPECT_EQ(namesOf(".vsa"), namesOf(".expect"));
}

TEST(RegressionFolderTest, EveryTestOfTheTableExists) {
  const std::set<std::string> listed = listedTests(contentOf(FOLDER / "README.md"));
  const std::set<std::string> defined = definedTests();
  EXPECT_FALSE(listed.empty());
  for (const std::string& test : listed) EXPECT_TRUE(defined.contains(test)) << test;
}

}  // namespace

}  // namespace vsa_tests
