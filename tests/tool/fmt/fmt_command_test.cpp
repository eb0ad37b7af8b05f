// Tests of vsa fmt: its options, files on disk, and its exit status.
#include <sys/stat.h>

#include <cstdlib>

#include "tests/tool/command_fixture.h"
#include "tools/vsa/fmt/format_file.h"

namespace {

using vsa_tests::CommandOutcome;

constexpr char RAW[] = "sphere ball: .radius=1.50;  # r\n\n\n\n.at=vec3( 1,2,3 );\n";
constexpr char DONE[] = "sphere ball:\n  .radius = 1.50;  # r\n\n  .at = vec3(1 2 3);\n";

class FmtCommandTest : public vsa_tests::CommandFixture {
 protected:
  /// Replaces the file by its formatted text. Calls `onRead` after each read of the file.
  vsa_tools::FormatOutcome replace(const std::string& path,
                                   const vsa_tools::ReadingProgress& onRead) {
    return vsa_tools::formatFile(path, vsa_tools::FormatMode::Replace, {}, onRead);
  }
};

TEST_F(FmtCommandTest, PrintsByDefault) {
  write("a.vsa", RAW);
  const CommandOutcome run = vsa("fmt a.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, DONE);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(content("a.vsa"), RAW);
  EXPECT_EQ(vsa("fmt <a.vsa").out, DONE);
  EXPECT_EQ(vsa("fmt - <a.vsa").out, DONE);
  EXPECT_EQ(statusOf("cat a.vsa | " VSA_COMMAND " fmt >b.vsa"), 0);
  EXPECT_EQ(content("b.vsa"), DONE);
}

TEST_F(FmtCommandTest, ReplacesInPlace) {
  write("a.vsa", RAW);
  ::chmod((folder_ / "a.vsa").c_str(), 0640);
  const CommandOutcome run = vsa("fmt -i a.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(content("a.vsa"), DONE);
  struct stat status {};
  ::stat((folder_ / "a.vsa").c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777, 0640U);
  EXPECT_EQ(statusOf("ls -A | grep -c tmp >count.txt"), 1);
}

TEST_F(FmtCommandTest, DoesNotTouchAFormattedFile) {
  write("a.vsa", DONE);
  statusOf("touch -d 2001-02-03 a.vsa");
  EXPECT_EQ(vsa("fmt --in-place a.vsa").status, 0);
  EXPECT_EQ(statusOf("find a.vsa -newermt 2002-01-01 | grep -q a"), 1);
}

// Nothing is written up to the first change. Then the beginning is copied from the old file.
TEST_F(FmtCommandTest, ReplacesAFileWhoseBeginningIsFormatted) {
  std::string beginning = "\xEF\xBB\xBF";
  for (int i = 0; i < 30000; ++i) {
    beginning += "sphere s" + std::to_string(i) + ":\n  .radius = 1.50;\n";
  }
  const std::pair<std::string, std::string> endings[] = {
      {"sphere ball: .radius=2;", "sphere ball:\n  .radius = 2;\n"},
      {"sphere ball:", "sphere ball:\n"},
      {"\n\n", ""},
  };
  for (const auto& [ending, formatted] : endings) {
    write("a.vsa", beginning + ending);
    EXPECT_EQ(vsa("fmt -i a.vsa").status, 0) << ending;
    EXPECT_EQ(content("a.vsa"), beginning + formatted) << ending;
  }
}

// A file that is formatted already is only read, so a full disk does not matter.
TEST_F(FmtCommandTest, WritesNothingForAFormattedFile) {
  std::string text;
  while (text.size() < 5000) text += "sphere s" + std::to_string(text.size()) + ";\n";
  write("a.vsa", text);
  EXPECT_EQ(statusOf("(ulimit -f 1; " VSA_COMMAND " fmt -i a.vsa)"), 0);
  write("b.vsa", text + "sphere  last;\n");
  EXPECT_NE(statusOf("(ulimit -f 1; " VSA_COMMAND " fmt -i b.vsa)"), 0);
  EXPECT_EQ(content("b.vsa"), text + "sphere  last;\n");
}

TEST_F(FmtCommandTest, Check) {
  write("a.vsa", RAW);
  write("b.vsa", DONE);
  CommandOutcome run = vsa("fmt --check a.vsa b.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "vsa: a.vsa: not formatted\n");
  EXPECT_EQ(run.out, "");
  run = vsa("fmt --check b.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
}

TEST_F(FmtCommandTest, Diff) {
  write("a.vsa", "t n;\nt m;\nt o;\nt p;\nn.x=1;\n");
  const CommandOutcome run = vsa("fmt --diff a.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out,
            "--- a.vsa\n+++ a.vsa (formatted)\n@@ -2,4 +2,4 @@\n t m;\n t o;\n t p;\n-n.x=1;\n"
            "+n.x = 1;\n");
  write("b.vsa", DONE);
  EXPECT_EQ(vsa("fmt --diff b.vsa").status, 0);
  EXPECT_EQ(vsa("fmt --diff b.vsa").out, "");
}

TEST_F(FmtCommandTest, PatchAppliesTheDiff) {
  if (statusOf("command -v patch >/dev/null") != 0) {
    GTEST_FAIL() << "the program patch is needed";
  }
  write("a.vsa", RAW);
  vsa("fmt --diff a.vsa");
  EXPECT_EQ(statusOf("patch -s a.vsa <stdout.txt"), 0);
  EXPECT_EQ(content("a.vsa"), DONE);
}

TEST_F(FmtCommandTest, LeavesAFileWithAMistakeAlone) {
  for (const char* text : {"t n;\nn.x = ;\n", "t n; !", "t n; n.x = \"cut",
                           "t n; n.f = float[1] {1 2};", "t n;\xFF t m;", "m.x = 1;"}) {
    write("bad.vsa", text);
    for (const char* option : {"", "-i", "--check", "--diff"}) {
      const CommandOutcome run = vsa(std::string("fmt bad.vsa ") + option);
      EXPECT_EQ(run.status, 1) << text << option;
      EXPECT_EQ(run.out, "");
      EXPECT_TRUE(run.err.starts_with("bad.vsa:1:") || run.err.starts_with("bad.vsa:2:"))
          << run.err;
      EXPECT_NE(run.err.find("not formatted, because"), std::string::npos) << run.err;
      EXPECT_EQ(content("bad.vsa"), text);
    }
  }
}

TEST_F(FmtCommandTest, NamesThePlaceOfAMistake) {
  write("bad.vsa", "t n;\nn.x = ;\n");
  EXPECT_EQ(vsa("fmt -i bad.vsa").err,
            "bad.vsa:2:7: error: expected '(scalar|buffer|reference)', found ';'\n"
            "vsa: bad.vsa: not formatted, because it was not read completely\n");
  write("list.vsa", "t n: .a = { any };");
  EXPECT_EQ(vsa("fmt list.vsa").err,
            "list.vsa:1:13: error: invalid brace list token 'y'\n"
            "vsa: list.vsa: not formatted, because it was not read completely\n");
}

// What another program saves while the text is formatted is not lost.
TEST_F(FmtCommandTest, KeepsAFileThatChangesMeanwhile) {
  const std::string path = (folder_ / "a.vsa").string();
  for (const bool isReplaced : {true, false}) {
    write("a.vsa", RAW);
    const auto save = [&](std::uint64_t, std::uint64_t) {
      if (isReplaced) std::filesystem::remove(path);
      write("a.vsa", "t saved;");
    };
    const vsa_tools::FormatOutcome outcome = replace(path, save);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.messages,
              std::vector<std::string>{"vsa: " + path +
                                       ": left alone, because it changed while it was read"});
    EXPECT_EQ(content("a.vsa"), "t saved;");
  }
}

// Another program changes one digit after the text was formatted, and gives the file its old time.
TEST_F(FmtCommandTest, ComparesTheTextsBeforeItReplacesTheFile) {
  const std::string path = (folder_ / "a.vsa").string();
  write("a.vsa", "t  n: .k = 1;");
  const auto time = std::filesystem::last_write_time(path);
  const auto save = [&](std::uint64_t, std::uint64_t) {
    write("a.vsa", "t  n: .k = 2;");
    std::filesystem::last_write_time(path, time);
  };
  const vsa_tools::FormatOutcome outcome = replace(path, save);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.messages,
            std::vector<std::string>{"vsa: " + path +
                                     ": left alone, because its formatted text reads differently"});
  EXPECT_EQ(content("a.vsa"), "t  n: .k = 2;");
}

TEST_F(FmtCommandTest, WritesNoTextAboveTheLimit) {
  write("a.vsa", "a x;b y;c z;");
  const auto run = vsa("fmt -i --max-text 12 a.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            "vsa: a.vsa: left alone, because its formatted text exceeds the limit (--max-text)\n");
  EXPECT_EQ(content("a.vsa"), "a x;b y;c z;");
  EXPECT_EQ(vsa("fmt -i --max-text 14 a.vsa").status, 1);
  EXPECT_EQ(vsa("fmt -i --max-text 15 a.vsa").status, 0);
  EXPECT_EQ(content("a.vsa"), "a x;\nb y;\nc z;\n");
}

TEST_F(FmtCommandTest, ReplacesAFileWithTwoNamesOnce) {
  write("a.vsa", RAW);
  std::filesystem::create_symlink("a.vsa", folder_ / "link.vsa");
  const auto run = vsa("fmt -i -j 4 a.vsa ./a.vsa link.vsa a.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(content("a.vsa"), DONE);
}

// Two threads check and format a text of more than 4 MB. The one that ends first compares.
TEST_F(FmtCommandTest, ReplacesALongTextOfSmallNodes) {
  std::string raw, done;
  for (int i = 0; i < 200'000; ++i) {
    const std::string number = std::to_string(i);
    raw += "lamp   l" + number + ":.power=" + number + ";\n";
    done += "lamp l" + number + ":\n  .power = " + number + ";\n";
  }
  write("a.vsa", raw);
  EXPECT_EQ(vsa("fmt a.vsa >done.vsa").status, 0);
  EXPECT_EQ(vsa("fmt -i a.vsa").status, 0);
  EXPECT_EQ(content("a.vsa"), done);
  EXPECT_EQ(vsa("fmt -i a.vsa").status, 0);
  EXPECT_EQ(content("a.vsa"), done);
  write("a.vsa", raw + "l0 = ;");
  const auto run = vsa("fmt -i a.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.err.starts_with("a.vsa:200001:")) << run.err;
  EXPECT_EQ(content("a.vsa"), raw + "l0 = ;");
}

TEST_F(FmtCommandTest, RefusesWrongCountsOfLists) {
  for (const char* count : {"99999999999999999999", "2 2"}) {
    write("a.vsa", std::string("lamp a: .k = float[") + count + "] {1 2};");
    const auto run = vsa("fmt --check a.vsa");
    EXPECT_EQ(run.status, 1) << count;
    EXPECT_NE(run.err.find("invalid buffer element count: ["), std::string::npos) << run.err;
  }
}

TEST_F(FmtCommandTest, PrintsSeveralTextsOneAfterAnother) {
  std::string expected, names;
  for (const char letter : {'a', 'b', 'c', 'd'}) {
    std::string text;
    for (int i = 0; i < 50'000; ++i)
      text += std::string("lamp ") + letter + std::to_string(i) + ";\n";
    names += ' ' + write(std::string(1, letter) + ".vsa", text);
    expected += text;
  }
  EXPECT_TRUE(vsa("fmt -j 4" + names).out == expected);
}

TEST_F(FmtCommandTest, FoldersListsAndJobs) {
  std::filesystem::create_directories(folder_ / "in" / "deep");
  for (const char* name : {"in/a.vsa", "in/b.vsa", "in/deep/c.vsa"}) write(name, RAW);
  write("in/other.txt", RAW);
  EXPECT_EQ(vsa("fmt --check -j 4 in").err,
            "vsa: in/a.vsa: not formatted\nvsa: in/b.vsa: not formatted\n"
            "vsa: in/deep/c.vsa: not formatted\n");
  EXPECT_EQ(statusOf("printf 'in/a.vsa\\0' >list; " VSA_COMMAND " fmt -i -0 @list"), 0);
  EXPECT_EQ(content("in/a.vsa"), DONE);
  EXPECT_EQ(vsa("fmt -i --jobs 0 in").status, 0);
  EXPECT_EQ(content("in/deep/c.vsa"), DONE);
  EXPECT_EQ(content("in/other.txt"), RAW);
}

TEST_F(FmtCommandTest, KeepsTheByteOrderMark) {
  write("a.vsa", "\xEF\xBB\xBFt  n;");
  EXPECT_EQ(vsa("fmt a.vsa").out, "\xEF\xBB\xBFt n;\n");
  EXPECT_EQ(vsa("fmt -i a.vsa").status, 0);
  EXPECT_EQ(content("a.vsa"), "\xEF\xBB\xBFt n;\n");
  EXPECT_EQ(vsa("fmt --check a.vsa").status, 0);
}

TEST_F(FmtCommandTest, WrongUse) {
  EXPECT_EQ(vsa("fmt missing.vsa").status, 2);
  EXPECT_EQ(vsa("fmt .").status, 2);
  EXPECT_EQ(vsa("fmt --check --diff a.vsa").status, 2);
  EXPECT_EQ(vsa("fmt -i --check a.vsa").status, 2);
  EXPECT_EQ(vsa("fmt -i - </dev/null").status, 2);
  EXPECT_EQ(vsa("fmt -j x a.vsa").status, 2);
  EXPECT_EQ(vsa("fmt -i /dev/null").status, 2);
}

TEST_F(FmtCommandTest, ReadsAPipeThatIsNamed) {
  EXPECT_EQ(statusOf("mkfifo pipe; echo 'lamp  a;' >pipe & " VSA_COMMAND " fmt pipe >out.txt"), 0);
  EXPECT_EQ(content("out.txt"), "lamp a;\n");
  EXPECT_EQ(statusOf(":; echo 'lamp  a;' >pipe & " VSA_COMMAND " fmt --check pipe 2>err.txt"), 1);
  EXPECT_EQ(content("err.txt"), "vsa: pipe: not formatted\n");
  EXPECT_EQ(statusOf("cat /dev/zero 2>err.txt | " VSA_COMMAND
                     " fmt --max-text 1000 /dev/stdin >out.txt 2>err.txt"),
            1);
  EXPECT_NE(content("err.txt").find("not read completely"), std::string::npos);
  EXPECT_EQ(statusOf(VSA_COMMAND " fmt --check --max-text 1000 /dev/zero 2>err.txt"), 1);
  EXPECT_NE(content("err.txt").find("not read completely"), std::string::npos);
}

// Nobody writes to the pipe, so opening it would wait.
TEST_F(FmtCommandTest, DoesNotReplaceAPipe) {
  EXPECT_EQ(statusOf("mkfifo pipe; " VSA_COMMAND " fmt -i pipe 2>err.txt"), 2);
  EXPECT_EQ(content("err.txt"), "vsa: pipe: not a regular file\n");
}

TEST_F(FmtCommandTest, TellsWhenOutputCannotBeWritten) {
  write("a.vsa", RAW);
  EXPECT_EQ(statusOf(VSA_COMMAND " fmt a.vsa >/dev/full 2>err.txt"), 2);
  EXPECT_NE(content("err.txt").find("cannot write"), std::string::npos);
}

// The limit of the file size ends the process by a signal while it writes the new file.
TEST_F(FmtCommandTest, KilledProcessLeavesTheOldFile) {
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "lamp  lamp" + std::to_string(i) + ";\n";
  write("a.vsa", text);
  EXPECT_NE(statusOf("ulimit -c 0; ulimit -f 64; " VSA_COMMAND " fmt -i a.vsa 2>err.txt"), 0);
  EXPECT_EQ(content("a.vsa"), text);
  EXPECT_EQ(statusOf("ls -A | grep -qE '^[.]a[.]vsa[.][0-9a-f]{16}[.]tmp$'"), 0);
}

// A list of 4 million numbers is formatted in an address space of 150 MB.
TEST_F(FmtCommandTest, StreamsLongLists) {
  std::string text = "t n;\nn.f = float[4000000] {";
  for (int i = 0; i < 4000000; ++i) text += i % 2 == 0 ? " 1.25 " : "-3,";
  write("a.vsa", text + "};");
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  EXPECT_EQ(vsa("fmt -i a.vsa").status, 0);  // sanitizers need more address space
#else
  EXPECT_EQ(statusOf("ulimit -v 150000; " VSA_COMMAND " fmt -i a.vsa"), 0);
#endif
  EXPECT_EQ(vsa("fmt --check a.vsa").status, 0);
  write("b.vsa", text + " 7};");
  const CommandOutcome run = vsa("fmt -i b.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(content("b.vsa"), text + " 7};");
  EXPECT_EQ(vsa("fmt b.vsa").out, "");
}

}  // namespace
