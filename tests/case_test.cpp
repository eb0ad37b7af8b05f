// Runs the cases in tests/cases, each from a String, from a File, and from a File that delivers
// single bytes. Checks that each message is raised by a case or listed in
// tests/cases/uncovered_messages.txt, and that docs/messages.md has a paragraph about it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/reading/read_diagnostic.h>
#include "tests/support/case_run.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;

const CaseFolder& caseFolder() {
  static const CaseFolder found = findCases(VSA_CASE_DIR);
  return found;
}

/// Returns the name of a case as a test name, which may have only letters, digits and underscores.
std::string testName(const testing::TestParamInfo<Case>& info) {
  std::string name = info.param.name;
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

class CaseTest : public testing::TestWithParam<Case> {};

TEST_P(CaseTest, OutcomeIsAsExpected) {
  const std::string text = contentOf(GetParam().text);
  const LinkWarnings links = linkWarningsOf(text);
  const std::string fromString = comparable(outcomeOf(text, Source::String), links);
  EXPECT_EQ(comparable(contentOf(GetParam().expectation), links), fromString);
  EXPECT_EQ(fromString, comparable(outcomeOf(text, Source::File), links))
      << "a File differs from a String";
  EXPECT_EQ(fromString, comparable(outcomeOf(text, Source::ByteByByte), links))
      << "single bytes differ from a String";
}

INSTANTIATE_TEST_SUITE_P(Cases, CaseTest, testing::ValuesIn(caseFolder().cases), testName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CaseTest);

TEST(CaseFolderTest, EveryFileHasAPartner) {
  EXPECT_FALSE(caseFolder().cases.empty());
  for (const fs::path& orphan : caseFolder().orphans) ADD_FAILURE() << orphan << " has no partner";
}

// --- the table of diagnostics: each row has a case and a paragraph ---

using zn::korvo_sdk::DIAGNOSTIC_ROWS;
using zn::korvo_sdk::DiagnosticId;

/// Returns the ids of all messages that the cases raise.
std::set<DiagnosticId> raisedMessages() {
  std::set<DiagnosticId> raised;
  for (const Case& each : caseFolder().cases) raised.merge(messagesOf(contentOf(each.text)));
  return raised;
}

/// Returns the lines "NAME reason" of uncovered_messages.txt: the messages that no case raises,
/// with the reason for each.
std::map<std::string, std::string> exemptions() {
  std::map<std::string, std::string> found;
  std::istringstream lines(contentOf(fs::path(VSA_CASE_DIR) / "uncovered_messages.txt"));
  for (std::string line; std::getline(lines, line);) {
    const size_t blank = line.find(' ');
    if (!line.empty() && line[0] != '#')
      found[line.substr(0, blank)] = line.substr(std::min(blank, line.size()));
  }
  return found;
}

TEST(MessageTest, EveryMessageIsRaisedByACase) {
  const auto raised = raisedMessages();
  const auto exempt = exemptions();
  for (const auto& row : DIAGNOSTIC_ROWS) {
    const bool isRaised = raised.contains(row.id);
    EXPECT_NE(isRaised, exempt.contains(row.name))
        << row.name << (isRaised ? " is exempt, and a case raises it" : " is raised by no case");
  }
}

TEST(MessageTest, EveryExemptionNamesAMessageAndAReason) {
  for (const auto& [name, reason] : exemptions()) {
    const bool isKnown = std::any_of(std::begin(DIAGNOSTIC_ROWS), std::end(DIAGNOSTIC_ROWS),
                                     [&](const auto& row) { return name == row.name; });
    EXPECT_TRUE(isKnown) << name;
    EXPECT_GT(reason.size(), 10u) << name;
  }
}

TEST(MessageTest, EveryMessageIsDocumented) {
  const std::string page = contentOf(fs::path(VSA_TEST_DIR).parent_path() / "docs/messages.md");
  for (const auto& row : DIAGNOSTIC_ROWS) {
    const std::string heading = std::string("\n### ") + row.name + '\n';
    EXPECT_NE(page.find(heading), std::string::npos) << row.name;
  }
}

// Every heading of the third level in docs/messages.md is the id of a message, of the reader or of
// the command vsa.
TEST(MessageTest, EveryParagraphHasAMessage) {
  std::set<std::string> ids = {"unreadable-file"};  // a message of the command vsa
  for (int i = 0; i < vsa::DIAGNOSTIC_ID_COUNT; ++i) {
    ids.insert(vsa::name(static_cast<vsa::DiagnosticId>(i)));
  }
  std::istringstream lines(contentOf(fs::path(VSA_TEST_DIR).parent_path() / "docs/messages.md"));
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(!line.starts_with("### ") || ids.contains(line.substr(4))) << line;
  }
}

TEST(MessageTest, IdsAreUniqueAndInKebabCase) {
  std::set<std::string> names;
  for (const auto& row : DIAGNOSTIC_ROWS) {
    const std::string name = row.name;
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string::npos) << name;
  }
}

}  // namespace

}  // namespace vsa_tests
