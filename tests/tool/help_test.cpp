// Tests of the help, the version, and the message about a misspelt command or option.
#include <gtest/gtest.h>

#include <string>

#include "tests/tool/command_fixture.h"

namespace vsa_tests {

namespace {

using HelpTest = CommandFixture;

TEST_F(HelpTest, TheCommandHelpIsTheOptionHelp) {
  EXPECT_EQ(vsa("--help").out, vsa("help").out);
  EXPECT_EQ(vsa("check --help").out, vsa("help check").out);
  EXPECT_EQ(0, vsa("help check").status);
  EXPECT_EQ(2, vsa("help chekc").status);
  EXPECT_EQ(vsa("--version").out, vsa("-V").out);
  EXPECT_EQ(0, vsa("-V").status);
}

TEST_F(HelpTest, EveryCommandHasExamplesAndExitStatuses) {
  for (const char* command : {"check", "convert", "diff", "dump", "explain", "extract", "fmt",
                              "graph", "merge", "stats", "tree", "types"}) {
    const std::string help = vsa(std::string("help ") + command).out;
    EXPECT_NE(std::string::npos, help.find(std::string("\nExamples:\n  vsa ") + command)) << help;
    EXPECT_NE(std::string::npos, help.find("\nExit status:\n  0  ")) << help;
    EXPECT_NE(std::string::npos, help.find("\n  2  wrong usage")) << help;
    EXPECT_NE(std::string::npos, vsa("help").out.find(std::string("  ") + command)) << command;
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

}  // namespace

}  // namespace vsa_tests
