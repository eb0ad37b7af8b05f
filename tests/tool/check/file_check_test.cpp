// Tests of the check of one file: what becomes of a file that cannot be read to its end.
#include "tools/vsa/check/file_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/tool/command_fixture.h"
#include "tools/vsa/check/kinds.h"

namespace vsa_tests {

namespace {

using FileCheckTest = CommandFixture;

TEST_F(FileCheckTest, AFileThatDisappearsBeforeItIsReadIsUnreadable) {
  write("a.vsa", "lamp a;\n");
  const std::string path = (folder_ / "a.vsa").string();
  vsa_tools::CheckedText text(path, 3);  // the text is too long to be kept
  ASSERT_FALSE(text.isKept());
  std::filesystem::remove(path);
  const vsa_tools::ReadArguments reading;
  const vsa_tools::FileCheckOptions options{reading};
  const vsa_tools::RuleSet noRules([](const vsa_tools::Rule&) { return false; });
  std::vector<std::string> ids;
  const vsa_tools::FileCheck::Consumer consumer = [&](vsa_tools::Finding&& finding) {
    ids.emplace_back(finding.id);
    return true;
  };
  vsa_tools::FileCheck(text, options, noRules, consumer).run();
  EXPECT_EQ(ids, std::vector<std::string>{std::string(vsa_tools::UNREADABLE_FILE)});
}

// The pipe has more bytes than are kept, and the escape `\%` is among the kept ones.
TEST_F(FileCheckTest, NoPartOfATextIsCheckedOnASecondThread) {
  statusOf("mkfifo pipe; printf 'lamp a: .k = \"50\\\\%%\";\n# end\n' >pipe &");
  vsa_tools::CheckedText text((folder_ / "pipe").string(), 25);
  ASSERT_FALSE(text.isKept());
  const vsa_tools::ReadArguments reading;
  vsa_tools::FileCheckOptions options{reading};
  options.minConcurrentBytes = 1;
  const vsa_tools::RuleSet rules(
      [](const vsa_tools::Rule& rule) { return std::string(rule.id) == "unknown-escape"; });
  std::vector<std::string> ids;
  const vsa_tools::FileCheck::Consumer consumer = [&](vsa_tools::Finding&& finding) {
    ids.emplace_back(finding.id);
    return true;
  };
  vsa_tools::FileCheck(text, options, rules, consumer).run();
  EXPECT_EQ(ids, std::vector<std::string>());
}

// The rule for strings that are names waits for the scene, so its findings are made late.
TEST_F(FileCheckTest, DeliversTheFindingsThatItsSecondThreadMakesLast) {
  const std::string text = "lamp a: .partner = b;\nlamp b: .partner = \"a\";\n";
  const vsa_tools::ReadArguments reading;
  vsa_tools::FileCheckOptions options{reading};
  options.minConcurrentBytes = 1;
  const vsa_tools::RuleSet allRules([](const vsa_tools::Rule&) { return true; });
  vsa_tools::CheckedText checked(vsa_tools::CheckedText::InMemory{text});
  std::vector<std::string> ids;
  const vsa_tools::FileCheck::Consumer consumer = [&](vsa_tools::Finding&& finding) {
    ids.emplace_back(finding.id);
    return true;
  };
  vsa_tools::FileCheck(checked, options, allRules, consumer).run();
  EXPECT_EQ(std::count(ids.begin(), ids.end(), "string-for-reference"), 1);
}

// The input refers to a node once, so the rule for strings that are names looks up each string in
// the scene. The findings are passed on while the second thread finds more. If the consumer then
// ends the check, the thread must not use the scene any more, which AddressSanitizer checks.
TEST_F(FileCheckTest, EndsItsSecondThreadBeforeTheScene) {
  std::string text = "lamp chief: .partner = lamp0;\n";
  for (int i = 0; i < 4000; ++i) {
    const std::string name = "lamp" + std::to_string(i);
    text += "lamp " + name + ": .partner = \"" + name + "\";\n";
  }
  const vsa_tools::ReadArguments reading;
  vsa_tools::FileCheckOptions options{reading};
  options.minConcurrentBytes = 1;
  const vsa_tools::RuleSet allRules([](const vsa_tools::Rule&) { return true; });
  for (int round = 0; round < 20; ++round) {
    vsa_tools::CheckedText checked(vsa_tools::CheckedText::InMemory{text});
    int count = 0;
    const vsa_tools::FileCheck::Consumer consumer = [&](vsa_tools::Finding&&) {
      return ++count <= round;
    };
    vsa_tools::FileCheck(checked, options, allRules, consumer).run();
    EXPECT_EQ(count, round + 1);
  }
}

}  // namespace

}  // namespace vsa_tests
