// Tests of Ctrl-C: the command prints what it has found, and exits with the status 130.
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "tests/tool/command_fixture.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/read_scene.h"

namespace vsa_tools {

namespace {

using InterruptTest = vsa_tests::CommandFixture;

// Returns a shell command that runs vsa with a pipe as standard input. The pipe stays open. SIGINT
// is sent when the shell condition `isReady` is true, at the latest after five seconds.
std::string interrupted(const std::string& command, const std::string& isReady) {
  return "mkfifo pipe; { cat a.vsa; exec sleep 60; } >pipe & feeder=$!; "
         "env --default-signal=INT " VSA_COMMAND " " +
         command +
         " <pipe >stdout.txt 2>stderr.txt & vsa=$!; "
         "for i in $(seq 100); do if " +
         isReady +
         "; then break; fi; sleep 0.05; done; kill -INT $vsa; wait $vsa; s=$?; "
         "kill $feeder; exit $s";
}

TEST_F(InterruptTest, CheckPrintsWhatItFound) {
  write("a.vsa", "lamp a: .k = 1;\n.k = 2.5;\n.l = 1;\n");
  EXPECT_EQ(statusOf(interrupted("check -", "test $i -gt 10")), 130);
  const std::string said = content("stdout.txt");
  EXPECT_NE(said.find("<stdin>:2:6: warning: narrowing Real to Int @ a.k [narrowing]"), said.npos)
      << said;
  EXPECT_NE(said.find("1 file checked: 0 errors, 1 warning; interrupted"), said.npos) << said;
}

// The types are incomplete when Ctrl-C ends their reading. That is no error in them.
TEST_F(InterruptTest, CheckEndsWhileItReadsTypes) {
  write("a.vsa", "{\"types\": [");
  write("b.vsa", "lamp a;");
  EXPECT_EQ(statusOf(interrupted("check --types /dev/stdin b.vsa", "test $i -gt 10")), 130);
  EXPECT_EQ(content("stderr.txt"), "");
}

// The workers of b.vsa, c.vsa and d.vsa have too many findings to keep. They await their turns
// until Ctrl-C ends the first file.
TEST_F(InterruptTest, CheckPrintsNoFileAfterTheInterruptedOne) {
  write("a.vsa", "lamp a: .k = 1;\n.k = 2.5;\n");
  std::string text = "lamp a: .k = 1;\n";
  for (int i = 0; i < 3000; ++i) text += ".k = 2.5;\n";
  for (const char* name : {"b.vsa", "c.vsa", "d.vsa"}) write(name, text);
  EXPECT_EQ(statusOf(interrupted("check -j 4 --format line - b.vsa c.vsa d.vsa", "test $i -gt 10")),
            130);
  const std::string said = content("stdout.txt");
  EXPECT_TRUE(said.starts_with("<stdin>:")) << said.substr(0, 1000);
  EXPECT_EQ(said.find(".vsa:"), said.npos) << said.substr(0, 1000);
}

// A text without findings has passed the check only if it was read to its end.
TEST_F(InterruptTest, CheckListsNoPassedTestForATextThatItDidNotRead) {
  write("a.vsa", "lamp a: .k = 1;\n.l = 1;\n");
  EXPECT_EQ(statusOf(interrupted("check --format junit -", "test $i -gt 10")), 130);
  const std::string said = content("stdout.txt");
  EXPECT_NE(said.find("<testsuites tests=\"0\""), said.npos) << said;
  EXPECT_EQ(said.find("<testcase"), said.npos) << said;
}

// A program that receives the report must not take what is missing in it for mended.
TEST_F(InterruptTest, CheckReportsThatItWasNotSuccessful) {
  write("a.vsa", "lamp a: .k = 1;\n.l = 1;\n");
  EXPECT_EQ(statusOf(interrupted("check --format sarif -", "test $i -gt 10")), 130);
  const std::string said = content("stdout.txt");
  EXPECT_NE(said.find("\"executionSuccessful\":false"), said.npos) << said;
}

// Here, the file to be fixed is the pipe itself. A regular file in its place would contain only a
// part of the text.
TEST_F(InterruptTest, CheckDoesNotFixATextThatItDidNotReadToItsEnd) {
  write("a.vsa", "lamp a: .k = 1e-05;\n");
  EXPECT_EQ(statusOf(interrupted("check --fix pipe", "test $i -gt 10")), 130);
  EXPECT_TRUE(std::filesystem::is_fifo(folder_ / "pipe"));
}

TEST_F(InterruptTest, CheckKeepsTheOldBaseline) {
  write("a.vsa", "lamp a: .k = 1;\n.k = 2.5;\n");
  write("known.json", "old");
  EXPECT_EQ(statusOf(interrupted("check --write-baseline known.json - a.vsa", "test $i -gt 10")),
            130);
  EXPECT_EQ(content("known.json"), "old");
}

// Ctrl-C ends the reading of the file at different places. A fixed text is longer than the old one.
TEST_F(InterruptTest, CheckDoesNotReplaceAFileByItsFirstPart) {
  constexpr std::size_t COMMENT_BYTES = 20'000'000;
  write("whole.vsa", "lamp a: .k = 1e-05;\n# " + std::string(COMMENT_BYTES, 'x'));
  EXPECT_EQ(statusOf("for i in 1 2 3; do cp whole.vsa a.vsa; "
                     "env --default-signal=INT " VSA_COMMAND " check --fix a.vsa >stdout.txt & "
                     "vsa=$!; sleep 0.0$i; kill -INT $vsa; wait $vsa; "
                     "test $(stat -c %s a.vsa) -ge $(stat -c %s whole.vsa) || exit 99; done"),
            0);
}

// A node with the name may be in the part of the text that was not read.
TEST_F(InterruptTest, TreeDoesNotSayThatANameIsMissing) {
  write("a.vsa", "lamp a: .k = 1;\n");
  EXPECT_EQ(statusOf(interrupted("tree --name b -", "test $i -gt 10")), 130);
  EXPECT_EQ(content("stderr.txt"), "<stdin>: error: interrupted\n");
}

// The first bytes of a file are read when the file is opened. Ctrl-C may end the wait for them.
TEST_F(InterruptTest, CommandsEndBeforeTheFirstByte) {
  write("a.vsa", "");
  write("b.vsa", "lamp a;\n");
  for (const char* command : {"convert -", "diff - b.vsa", "dump -", "extract - a", "graph -",
                              "stats -", "tree -", "types -"}) {
    EXPECT_EQ(statusOf("rm -f pipe; " + interrupted(command, "test $i -gt 4")), 130) << command;
    const std::string said = content("stderr.txt");
    EXPECT_TRUE(said.starts_with("vsa: <stdin>: interrupted\n")) << command << '\n' << said;
  }
}

// No process ever opens the pipe to write to it.
TEST_F(InterruptTest, CommandsEndWhileTheyOpenAPipe) {
  ASSERT_EQ(statusOf("mkfifo pipe"), 0);
  for (const char* command : {"dump", "tree", "types"}) {
    EXPECT_EQ(statusOf(std::string("env --default-signal=INT " VSA_COMMAND " ") + command +
                       " pipe >stdout.txt 2>stderr.txt & vsa=$!; sleep 0.3; kill -INT $vsa; "
                       "wait $vsa"),
              130)
        << command;
    EXPECT_EQ(content("stderr.txt"), "vsa: pipe: interrupted\n") << command;
  }
}

// The file at which Ctrl-C ends the check, and those after it, are not counted as checked.
TEST_F(InterruptTest, CheckCountsTheFilesThatItChecked) {
  write("a.vsa", "lamp a;\n");
  EXPECT_EQ(statusOf("mkfifo pipe; env --default-signal=INT " VSA_COMMAND
                     " check a.vsa pipe a.vsa >stdout.txt 2>stderr.txt & "
                     "vsa=$!; sleep 0.3; kill -INT $vsa; wait $vsa"),
            130);
  EXPECT_EQ(content("stdout.txt"), "1 file checked: interrupted\n");
  EXPECT_EQ(content("stderr.txt"), "");
}

// One of several workers waits for the pipe, and another thread receives the signal. Without
// --foreground, timeout would send the signal twice, and the second one ends any process.
TEST_F(InterruptTest, WorkersStopWaitingForAPipe) {
  write("a.vsa", "lamp a;\n");
  ASSERT_EQ(statusOf("mkfifo pipe"), 0);
  for (const char* command : {"check", "stats", "fmt --check"}) {
    EXPECT_EQ(
        statusOf(std::string("timeout --foreground -s KILL 20 env --default-signal=INT " VSA_COMMAND
                             " ") +
                 command +
                 " -j 3 a.vsa pipe a.vsa >stdout.txt 2>stderr.txt & "
                 "sleep 0.3; kill -INT $!; wait $!"),
        130)
        << command;
  }
}

TEST_F(InterruptTest, DumpPrintsWhatItRead) {
  write("a.vsa", "lamp a: .k = 1;\n.l = 1;\n.m = 1;\n");
  EXPECT_EQ(statusOf(interrupted("dump -", "test $i -gt 10")), 130);
  EXPECT_NE(content("stdout.txt").find("\"name\":\"k\""), std::string::npos);
  EXPECT_NE(content("stderr.txt").find("interrupted"), std::string::npos);
}

// Waits until the new file is there, and sends SIGINT. A fast machine may have written all of it by
// then.
TEST_F(InterruptTest, AWritingLeavesTheOldFile) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += "lamp n" + std::to_string(i) + ": .a = 1.5; .b = 2;\n";
  write("a.vsa", text);
  for (const char* command : {"convert a.vsa", "extract a.vsa 'n*'"}) {
    write("out.vsa", "old");
    const int status =
        statusOf(std::string("env --default-signal=INT " VSA_COMMAND " ") + command +
                 " -o out.vsa & vsa=$!; while kill -0 $vsa; do set -- .out.vsa.*.tmp; "
                 "if test -e \"$1\"; then kill -INT $vsa; fi; done 2>/dev/null; wait $vsa; s=$?; "
                 "set -- .out.vsa.*.tmp; test ! -e \"$1\" || exit 99; exit $s");
    if (status == 0) continue;
    EXPECT_EQ(status, 130) << command;
    EXPECT_EQ(content("out.vsa"), "old") << command;
  }
}

TEST_F(InterruptTest, AnEndlessDeviceIsInterrupted) {
  EXPECT_EQ(statusOf("timeout -s INT 0.5 env --default-signal=INT " VSA_COMMAND
                     " check /dev/zero >stdout.txt;"
                     "test $? = 130 -o $? = 124"),
            0);
}

// In the tests above, Ctrl-C mostly ends the wait for the next bytes. Here, it ends the reading.
TEST_F(InterruptTest, AnInterruptedReadingIsALoss) {
  write("a.vsa", "lamp a;\n");
  vsa::ReadOptions options;
  options.onProgress = [](const vsa::ReadProgress&) { return false; };
  vsa::Scene scene;
  const auto outcome = readScene(scene, (folder_ / "a.vsa").string(), options);
  ASSERT_TRUE(outcome);
  ASSERT_EQ(outcome->losses.size(), 1U);
  EXPECT_EQ(outcome->losses[0].text, "interrupted");
}

TEST(InterruptScopeTest, RestoresTheHandler) {
  const auto before = std::signal(SIGINT, SIG_DFL);
  { const InterruptScope scope; }
  EXPECT_TRUE(std::signal(SIGINT, before) == SIG_DFL);
}

}  // namespace

}  // namespace vsa_tools
