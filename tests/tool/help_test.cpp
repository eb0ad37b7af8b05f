// Tests of the help, the version, and the message about a misspelt command or option.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tool/command_fixture.h"
#include "tests/tool/expected_file.h"
#include "tools/vsa/common/did_you_mean.h"

namespace vsa_tests {

namespace {

using HelpTest = CommandFixture;

constexpr const char* COMMANDS[] = {"check", "convert", "diff",  "dump",  "explain", "extract",
                                    "fmt",   "graph",   "merge", "stats", "tree",    "types"};

/// Returns the arguments of the examples in a help text, without what follows them: explanations,
/// pipes and redirections.
std::vector<std::string> examplesOf(const std::string& help) {
  std::istringstream lines(help.substr(std::min(help.size(), help.find("\nExamples:\n"))));
  std::vector<std::string> examples;
  for (std::string line; std::getline(lines, line) && line.rfind("Exit status", 0) != 0;) {
    const std::size_t command = line.find("vsa ");
    if (line.rfind("  ", 0) != 0 || command == std::string::npos) continue;
    const std::size_t start =
        line.rfind("| vsa ") == std::string::npos ? command : line.rfind("vsa ");
    const std::string arguments = line.substr(start + 4);
    examples.push_back(
        arguments.substr(0, std::min(arguments.find("   "), arguments.find_first_of("<>|"))));
  }
  return examples;
}

TEST_F(HelpTest, TheCommandHelpIsTheOptionHelp) {
  EXPECT_EQ(vsa("--help").out, vsa("help").out);
  EXPECT_EQ(vsa("check --help").out, vsa("help check").out);
  EXPECT_EQ(0, vsa("help check").status);
  EXPECT_EQ(2, vsa("help chekc").status);
  EXPECT_EQ(vsa("--version").out, vsa("-V").out);
  EXPECT_EQ(0, vsa("-V").status);
}

TEST_F(HelpTest, IsAsExpected) {
  std::string printed = vsa("help").out;
  for (const char* command : COMMANDS) {
    printed +=
        std::string("=== vsa help ") + command + '\n' + vsa(std::string("help ") + command).out;
  }
  expectContent(std::filesystem::path(VSA_TEST_DIR) / "tool/help.txt", printed);
}

TEST_F(HelpTest, EveryCommandHasExamplesAndExitStatuses) {
  for (const char* command : COMMANDS) {
    const std::string help = vsa(std::string("help ") + command).out;
    EXPECT_NE(std::string::npos, help.find(std::string("\nExamples:\n  vsa ") + command)) << help;
    EXPECT_NE(std::string::npos, help.find("\nExit status:\n  0  ")) << help;
    EXPECT_NE(std::string::npos, help.find("\n  2  wrong usage")) << help;
    EXPECT_NE(std::string::npos, vsa("help").out.find(std::string("  ") + command)) << command;
  }
}

TEST_F(HelpTest, TheExamplesAreRightUsage) {
  std::size_t count = 0;
  for (const char* command : COMMANDS) {
    for (const std::string& example : examplesOf(vsa(std::string("help ") + command).out)) {
      const CommandOutcome run = vsa(example + " </dev/null");
      EXPECT_EQ(std::string::npos, run.err.find("vsa --help shows the usage"))
          << example << run.err;
      ++count;
    }
  }
  EXPECT_GE(count, 24u);
}

TEST_F(HelpTest, TheExamplesOfExplainAreKnownIds) {
  for (const std::string& example : examplesOf(vsa("help explain").out)) {
    EXPECT_EQ(0, vsa(example).status) << example;
  }
}

TEST_F(HelpTest, CheckHasExamplesAndExitStatuses) {
  const std::string help = vsa("help check").out;
  for (const char* part : {"Examples:", "Exit status:", "--write-baseline", "docs/checking.md"}) {
    EXPECT_NE(std::string::npos, help.find(part)) << part;
  }
}

TEST_F(HelpTest, AMisspeltNameGetsTheRightOne) {
  const std::pair<const char*, const char*> rows[] = {
      {"chekc a.vsa", "did you mean check?"},
      {"dmup a.vsa", "did you mean dump?"},
      {"check --stritc a.vsa", "did you mean --strict?"},
      {"check --basline=x a.vsa", "did you mean --baseline?"},
      {"--verison", "did you mean --version?"},
  };
  for (const auto& [arguments, expected] : rows) {
    const CommandOutcome run = vsa(arguments);
    EXPECT_EQ(2, run.status) << arguments;
    EXPECT_NE(std::string::npos, run.err.find(expected)) << run.err;
  }
  EXPECT_EQ(std::string::npos, vsa("check --frobnicate a.vsa").err.find("did you mean"));
}

// The "x" before the name is no part of it: "xa" and "ax" would be one swap apart.
TEST(DidYouMeanTest, OnlyTheBytesOfANameCount) {
  EXPECT_EQ(vsa_tools::editDistance(std::string_view("xa").substr(1), "zzax"), 3U);
}

}  // namespace

}  // namespace vsa_tests
