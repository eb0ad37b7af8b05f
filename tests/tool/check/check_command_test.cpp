// Tests of vsa check: its output for people, and its exit statuses.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "tests/tool/command_fixture.h"

namespace vsa_tests {

namespace {

using namespace std::string_literals;

class CheckCommandTest : public CommandFixture {
 protected:
  void SetUp() override {
    CommandFixture::SetUp();
    // To narrow a value, the texts assign to an input twice. The rule `assigned-twice` would report
    // that, too, but it is not tested here.
    write(".vsa-check.json", R"({"ignore": ["assigned-twice"]})");
  }
};

constexpr char CLEAN[] = "sphere ball;\nball.radius = 2.5;\n";
constexpr char WARNING[] = "lamp lamp1;\nlamp1.count = 1;\nlamp1.count = 2.7;\n";
constexpr char ERROR[] = "lamp a: .k = 1;\n.k = \"x\";\n.after = 2;\n";

TEST_F(CheckCommandTest, ACleanFileHasASummaryOnly) {
  write("a.vsa", CLEAN);
  const CommandOutcome run = vsa("check a.vsa");
  EXPECT_EQ(0, run.status);
  EXPECT_EQ("1 file checked: no problems found\n", run.out);
  EXPECT_EQ("", run.err);
  EXPECT_EQ("", vsa("check -q a.vsa").out);
}

TEST_F(CheckCommandTest, AFindingIsShownInItsLine) {
  write("a.vsa", WARNING);
  const CommandOutcome run = vsa("check a.vsa");
  EXPECT_EQ(
      "a.vsa:3:15: warning: narrowing Real to Int @ lamp1.count [narrowing]\n"
      "    3 | lamp1.count = 2.7;\n"
      "      |               ^^^\n"
      "      = hint: write the first value as `1.0`, which makes the input a Real\n"
      "a.vsa:2:15: note: the input got its type here\n"
      "    2 | lamp1.count = 1;\n"
      "      |               ^\n"
      "1 file checked: 0 errors, 1 warning\n",
      run.out);
  EXPECT_EQ("", run.err);
}

TEST_F(CheckCommandTest, FindingsAtOnePlaceKeepTheirOrder) {
  write("a.vsa", "lamp sun:\n\xA0.x = 1;\n");
  const std::string out = vsa("check -q --format line a.vsa").out;
  EXPECT_NE(std::string::npos, out.find("a.vsa:2:1: warning: this byte")) << out;
  EXPECT_LT(out.find("a.vsa:2:1: error: node"), out.find("a.vsa:2:1: warning: this byte")) << out;
}

TEST_F(CheckCommandTest, TheExitStatusFollowsFromTheLevels) {
  write("clean.vsa", CLEAN);
  write("warning.vsa", WARNING);
  write("error.vsa", ERROR);
  EXPECT_EQ(0, vsa("check --strict clean.vsa").status);
  EXPECT_EQ(0, vsa("check warning.vsa clean.vsa").status);
  EXPECT_EQ(1, vsa("check --strict warning.vsa").status);
  EXPECT_EQ(1, vsa("check warning.vsa error.vsa").status);
  EXPECT_EQ(2, vsa("check error.vsa missing.vsa").status);
  EXPECT_EQ(2, vsa("check missing.vsa clean.vsa").status);
  EXPECT_EQ(2, statusOf(VSA_COMMAND " check error.vsa >/dev/full 2>stderr.txt"));
  EXPECT_EQ("vsa: cannot write: No space left on device\n", content("stderr.txt"));
  // The finding is longer than the buffer of standard output.
  write("long.vsa", "lamp a: .x = " + std::string(100000, 'y') + ";\n");
  EXPECT_EQ(2,
            statusOf(VSA_COMMAND " check --full --format line long.vsa >/dev/full 2>stderr.txt"));
}

TEST_F(CheckCommandTest, AFileThatCannotBeReadIsNamedAndTheOthersAreChecked) {
  write("a.vsa", WARNING);
  std::filesystem::create_directory(folder_ / "empty");
  const CommandOutcome run = vsa("check missing.vsa empty a.vsa @none");
  EXPECT_EQ(2, run.status);
  EXPECT_TRUE(run.out.starts_with(
      "empty: error: there are no *.vsa files in this folder [unreadable-file]\n"
      "none: error: No such file or directory [unreadable-file]\n"
      "missing.vsa: error: No such file or directory [unreadable-file]\n"
      "a.vsa:3:15: warning: "))
      << run.out;
  EXPECT_TRUE(run.out.ends_with("4 files checked: 3 errors, 1 warning in 4 files\n")) << run.out;
}

TEST_F(CheckCommandTest, FoldersAndListsAreCheckedInOrderWhateverTheNumberOfWorkers) {
  std::string names;
  for (int i = 10; i < 60; ++i) {
    const std::string name = "f" + std::to_string(i) + ".vsa";
    write(name, std::string(static_cast<std::size_t>(i), '\n') + WARNING);
    names += name + '\0';
  }
  write("list", names);
  const CommandOutcome run = vsa("check .");
  const std::size_t first = run.out.find("./f10.vsa:13:15"), last = run.out.find("./f59.vsa:62:15");
  EXPECT_LT(first, last) << run.out;
  EXPECT_NE(last, std::string::npos);
  EXPECT_TRUE(run.out.ends_with("50 files checked: 0 errors, 50 warnings in 50 files\n"));
  EXPECT_EQ(run.out, vsa("check -j 4 .").out);
  EXPECT_EQ(run.out, vsa("check -j 0 .").out);
  const std::string listed = vsa("check -j 3 -0 @list").out;
  EXPECT_EQ(listed, vsa("check --jobs 3 --null @list").out);
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'),
            std::count(listed.begin(), listed.end(), '\n'));
}

// This test limits the address space, which has no room for the stacks of 1024 threads. Sanitizers
// need more than that limit.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(CheckCommandTest, FewFilesNeedFewThreads) {
  write("a.vsa", WARNING);
  write("b.vsa", WARNING);
  const std::string expected = vsa("check a.vsa b.vsa").out;
  EXPECT_EQ(0,
            statusOf("ulimit -v 2000000 && " VSA_COMMAND " check -j 1024 a.vsa b.vsa >stdout.txt"));
  EXPECT_EQ(expected, content("stdout.txt"));
}

// The rules about links need far more memory than the reader for many links in one node. Other
// rules run on a second thread if the file is the only one.
TEST_F(CheckCommandTest, AFileThatNeedsTooMuchMemoryIsNamedAndTheOthersAreChecked) {
  std::string links = "lamp a;\n";
  for (int i = 0; i < 200000; ++i) links += "a.i" + std::to_string(i) + "=a;";
  write("links.vsa", links);
  write("warning.vsa", WARNING);
  const std::string limited = "ulimit -v 80000 && " VSA_COMMAND " check --ignore reference-circle ";
  for (const std::string workers : {"-j 1", "-j 2"}) {
    EXPECT_EQ(2, statusOf(limited + workers + " links.vsa warning.vsa >stdout.txt 2>stderr.txt"));
    const std::string out = content("stdout.txt");
    EXPECT_TRUE(
        out.starts_with("links.vsa: error: checking it needs more memory than there is "
                        "[unreadable-file]\nwarning.vsa:3:15: warning: "))
        << out;
    EXPECT_TRUE(out.ends_with("2 files checked: 1 error, 1 warning in 2 files\n")) << out;
    EXPECT_EQ("", content("stderr.txt"));
  }
  EXPECT_EQ(2, statusOf(limited + "links.vsa >stdout.txt"));
  EXPECT_TRUE(content("stdout.txt").ends_with("1 file checked: 1 error, 0 warnings\n"));
}
#endif

TEST_F(CheckCommandTest, APipeInAFolderIsNotRead) {
  write("a.vsa", CLEAN);
  EXPECT_EQ(0, statusOf("mkfifo pipe.vsa; timeout 20 " VSA_COMMAND " check . >stdout.txt"));
  EXPECT_EQ("1 file checked: no problems found\n", content("stdout.txt"));
}

TEST_F(CheckCommandTest, StandardInputHasAName) {
  write("a.vsa", "\xEF\xBB\xBFlamp a: .k = 1; .k = 2.5;\n");
  EXPECT_TRUE(vsa("check - <a.vsa").out.starts_with("<stdin>:1:22: warning: "))
      << vsa("check - <a.vsa").out;
  const CommandOutcome named = vsa("check --stdin-filename x/y.vsa - <a.vsa");
  EXPECT_TRUE(named.out.starts_with("x/y.vsa:1:22: warning: ")) << named.out;
  EXPECT_EQ(2, vsa("check - < .").status);
}

// Each of these findings has a position, even if its log line has none. No line or column is 0.
TEST_F(CheckCommandTest, MessagesHaveTheirPlaces) {
  struct Row {
    std::string text, line;
  };
  const Row rows[] = {
      {"lamp a;\n a.k[] = 1;", "2:5: error: invalid input array index: []"},
      {"lamp a;\n a.b = byte[1] {1 2};", "2:19: error: Cannot add 2 @ index 1 of byte[1]"},
      {"lamp a: .k = 1;\n.k.x = 1;", "error: cannot assign Object to Int @ a.k"},
      {"lamp a;\na.b\n= ;", "3:3: error: expected '(scalar|buffer|reference)', found ';'"},
      {"lamp a; \n !", "2:2: error: invalid token '!'"},
      {"lamp a; a.v = {1\n x}", "error: invalid brace list token 'x'"},
      {"\n42;", "2:1: error: unrecognized token '42'"},
      {"}", "1:1: error: invalid token '}'"},
      {"# version: x", "1:1: warning: Failed to parse VSA version comment: # version: x"},
      {"lamp a; a.x |= a.b.c;", "1:16: warning: Invalid output: a.b.c"},
      {"lamp a; a.x |= b.c;", "1:16: warning: Cannot connect nonexistent node b to a.x"},
      {"lamp a; a.x = byte[2] {1};", "warning: Too few elements (1) for byte[2] buffer"},
      {"sphere ball;\n\xFF ball.radius = 1;\n", "2:1: error: a byte 0xFF ends the text"},
  };
  for (const Row& row : rows) {
    write("a.vsa", row.text);
    const std::string out = vsa("check a.vsa").out;
    EXPECT_NE(std::string::npos, out.find(row.line)) << row.text << '\n' << out;
    EXPECT_EQ(std::string::npos, out.find(":0:")) << out;
  }
}

TEST_F(CheckCommandTest, ATextInAnotherEncodingHasOneFinding) {
  for (const std::string& text : {"\xFF\xFEs\0p\0"s, "#\0 \0a\0\n\0"s, "\0#\0 \0a\0\n"s}) {
    write("a.vsa", text);
    const CommandOutcome run = vsa("check a.vsa");
    EXPECT_EQ(1, run.status);
    EXPECT_NE(std::string::npos, run.out.find("[utf-16]")) << run.out;
    EXPECT_NE(std::string::npos, run.out.find("1 error, 0 warnings")) << run.out;
  }
  write("a.vsa", "lamp a: .s = \"x\0y\";\n"s);
  EXPECT_NE(std::string::npos, vsa("check a.vsa").out.find("a.vsa:1:16: error: a NUL byte"));
}

TEST_F(CheckCommandTest, ColourIsForTerminals) {
  write("a.vsa", WARNING);
  EXPECT_EQ(std::string::npos, vsa("check a.vsa").out.find('\x1B'));
  const std::string coloured = vsa("check --color always a.vsa").out;
  EXPECT_NE(std::string::npos, coloured.find("\x1B[1;35mwarning\x1B[0m: ")) << coloured;
  EXPECT_EQ(std::string::npos, vsa("check --color never a.vsa").out.find('\x1B'));
  EXPECT_EQ(2, vsa("check --color sometimes a.vsa").status);
  // script runs the command on a terminal.
  EXPECT_EQ(0, statusOf("TERM=xterm script -qec '" VSA_COMMAND
                        " check a.vsa' /dev/null </dev/null >stdout.txt"));
  EXPECT_NE(std::string::npos, content("stdout.txt").find("\x1B[1;35mwarning\x1B[0m: "))
      << content("stdout.txt");
}

TEST_F(CheckCommandTest, MaxDiagnosticsEndsTheCheckEarly) {
  write("a.vsa", WARNING);
  const CommandOutcome run = vsa("check -j 2 --max-diagnostics 2 a.vsa a.vsa a.vsa missing.vsa");
  EXPECT_EQ(1, run.status);
  EXPECT_TRUE(run.out.ends_with("; ended early (--max-diagnostics)\n")) << run.out;
  EXPECT_EQ(0, vsa("check --max-diagnostics 1 a.vsa").status);
}

TEST_F(CheckCommandTest, AFileNameIsNoCommandOfACiRunner) {
  write("::error file=x::a.vsa", "lamp a: .k = ;\n");
  write("##[error]b.vsa", "lamp a: .k = ;\n");
  write("c\\u200b.vsa", "lamp a: .k = ;\n");
  for (const char* format : {"full", "line"}) {
    const std::string out = vsa(std::string("check -q --format ") + format + " .").out;
    EXPECT_EQ(std::string::npos, out.find("##[")) << out;
    EXPECT_EQ(std::string::npos, ('\n' + out).find("\n::")) << out;
    EXPECT_NE(std::string::npos, out.find("c\\\\u200b.vsa:1:14: error: ")) << out;
  }
}

TEST_F(CheckCommandTest, FoldersWithoutFilesAreCounted) {
  std::filesystem::create_directory(folder_ / "a");
  std::filesystem::create_directory(folder_ / "b");
  EXPECT_EQ(
      "a: error: there are no *.vsa files in this folder [unreadable-file]\n"
      "2 files checked: 1 error, 0 warnings in 2 files; ended early (--max-diagnostics)\n",
      vsa("check --max-diagnostics 1 a b").out);
}

// Neither the reader nor a rule reads a text that is longer than --max-text. The byte order mark is
// not a part of the text.
TEST_F(CheckCommandTest, ATextThatIsTooLongHasOneFinding) {
  const std::string text = "\xEF\xBB\xBFlamp a: .k = 1;\n.k = 2;\n";
  write("long.vsa", text);
  const std::string arguments = "check --no-config --format line --max-text ";
  const std::string finding = ":1:1: error: the text is longer than 23 bytes [over-limit]\n";
  const std::string summary = "1 file checked: 1 error, 0 warnings\n";
  const CommandOutcome run = vsa(arguments + "23 long.vsa");
  EXPECT_EQ(1, run.status);
  EXPECT_EQ("long.vsa" + finding, run.out);
  EXPECT_EQ(summary, run.err);
  EXPECT_EQ("<stdin>" + finding, vsa(arguments + "23 - <long.vsa").out);
  EXPECT_EQ("long.vsa" + finding, vsa(arguments + "23 --fix long.vsa").out);
  EXPECT_EQ(text, content("long.vsa"));
  const std::string within = vsa(arguments + "24 long.vsa").out;
  EXPECT_TRUE(within.starts_with("long.vsa:2:1: warning: the input a.k gets a value twice"))
      << within;
  write("longer.vsa", text + std::string(1000, '#'));
  EXPECT_EQ("longer.vsa" + finding, vsa(arguments + "23 longer.vsa").out);
  EXPECT_EQ(summary, vsa(arguments + "23 longer.vsa").err);
  write("utf16.vsa", "\xFF\xFEl\0a\0m\0p\0"s + std::string(1000, '\0'));
  EXPECT_EQ("utf16.vsa" + finding, vsa(arguments + "23 utf16.vsa").out);
}

TEST_F(CheckCommandTest, FindingsBeyondThoseThatAreKeptAreInOrder) {
  std::string text = "lamp a: .k = 1;\n";
  for (int i = 0; i < 10000; ++i) text += ".k = 2.5;\n";
  write("a.vsa", text);
  const std::string out =
      vsa("check -j 2 -q --max-diagnostics 99999 --format line a.vsa a.vsa").out;
  EXPECT_EQ(20000, std::count(out.begin(), out.end(), '\n'));
  EXPECT_LT(out.find("a.vsa:5000:"), out.find("a.vsa:9000:"));
  EXPECT_LT(out.find("a.vsa:10001:"), out.rfind("a.vsa:2:"));
}

TEST_F(CheckCommandTest, FindingsOfALargeFileHaveTheirLines) {
  std::string text = "lamp a: .k = 1;\n.k = 2.5;\n# ";
  text.append(70 << 20, 'x');
  write("a.vsa", text + "\n.k = 3.5;\n");
  const std::string file = vsa("check a.vsa").out;
  EXPECT_NE(std::string::npos, file.find("a.vsa:2:6: warning: ")) << file;
  EXPECT_NE(std::string::npos, file.find("    4 | .k = 3.5;\n      |      ^^^\n")) << file;
  const std::string pipe = vsa("check - <a.vsa").out;
  EXPECT_NE(std::string::npos, pipe.find("<stdin>:4:6: warning: ")) << pipe;
}

}  // namespace

}  // namespace vsa_tests
