// Tests of applying the edits of findings.
#include "tools/vsa/check/fix/apply_edits.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "tests/tool/command_fixture.h"

namespace vsa_tests {

namespace {

using vsa_tools::EditedText;
using vsa_tools::replaceFile;
using vsa_tools::TextEdit;
using vsa_tools::withEdits;

using ReplaceFileTest = CommandFixture;

TEST(ApplyEdits, EditsReplaceInsertAndDelete) {
  const EditedText edited =
      withEdits("abcdef", {{{4, 5, "EE"}}, {{0, 0, "<"}, {6, 6, ">"}}, {{2, 3, ""}}});
  EXPECT_EQ("<abdEEf>", edited.text);
  EXPECT_EQ(3u, edited.fixed);
}

TEST(ApplyEdits, AFindingThatOverlapsAnEarlierOneIsLeftOut) {
  const EditedText edited =
      withEdits("abcdef", {{{1, 3, "X"}}, {{0, 1, "Y"}, {2, 4, "Z"}}, {{3, 4, "D"}}});
  EXPECT_EQ("aXDef", edited.text);
  EXPECT_EQ(2u, edited.fixed);
  EXPECT_EQ("Xab", withEdits("ab", {{{0, 0, "X"}}, {{0, 0, "Y"}}}).text);
}

TEST(ApplyEdits, AFindingOverlapsWhatIsBeforeOrAfterIt) {
  const std::vector<std::vector<TextEdit>> taken{{{2, 5, "X"}}, {{7, 7, "Y"}}};
  struct Row {
    TextEdit edit;
    std::string_view expected;
  };
  const Row rows[] = {
      {{0, 2, ""}, "XfgYhi"},     {{0, 3, ""}, "abXfgYhi"},  {{3, 4, ""}, "abXfgYhi"},
      {{4, 6, ""}, "abXfgYhi"},   {{5, 6, ""}, "abXgYhi"},   {{1, 6, ""}, "abXfgYhi"},
      {{6, 8, ""}, "abXfgYhi"},   {{6, 7, ""}, "abXfYhi"},   {{7, 8, ""}, "abXfgYhi"},
      {{5, 5, "-"}, "abX-fgYhi"}, {{8, 9, "-"}, "abXfgYh-"},
  };
  for (const Row& row : rows) {
    std::vector<std::vector<TextEdit>> findings = taken;
    findings.push_back({row.edit});
    EXPECT_EQ(row.expected, withEdits("abcdefghi", findings).text)
        << row.edit.begin << ' ' << row.edit.end;
  }
}

TEST(ApplyEdits, EditsOutsideOfTheTextAreLeftOut) {
  EXPECT_EQ("ab", withEdits("ab", {{{2, 3, "X"}}, {{2, 1, "X"}}, {}}).text);
  EXPECT_EQ(0u, withEdits("ab", {{{2, 3, "X"}}}).fixed);
}

TEST_F(ReplaceFileTest, TheFileKeepsItsPermissionsAndItsLinks) {
  write("a.vsa", "old");
  const std::string path = (folder_ / "a.vsa").string(), link = (folder_ / "link.vsa").string();
  ::chmod(path.c_str(), 0640);
  std::filesystem::create_symlink("a.vsa", link);
  EXPECT_EQ("", replaceFile(link, "new"));
  EXPECT_EQ("new", content("a.vsa"));
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  struct stat status {};
  ASSERT_EQ(0, ::stat(path.c_str(), &status));
  EXPECT_EQ(0640u, status.st_mode & 07777u);
}

// Only the superuser can give a file to another owner.
TEST_F(ReplaceFileTest, TheFileKeepsItsOwner) {
  write("a.vsa", "old");
  const std::string path = (folder_ / "a.vsa").string();
  const uid_t owner = ::geteuid() == 0 ? 1234 : ::geteuid();
  ASSERT_EQ(0, ::chown(path.c_str(), owner, static_cast<gid_t>(-1)));
  EXPECT_EQ("", replaceFile(path, "new"));
  EXPECT_EQ("new", content("a.vsa"));
  struct stat status {};
  ASSERT_EQ(0, ::stat(path.c_str(), &status));
  EXPECT_EQ(owner, status.st_uid);
}

TEST_F(ReplaceFileTest, ANameMayHaveAllBytesThatTheSystemAllows) {
  const std::string name = write(std::string(251, 'n').append(".vsa"), "old");
  EXPECT_EQ("", replaceFile((folder_ / name).string(), "new"));
  EXPECT_EQ("new", content(name));
}

TEST_F(ReplaceFileTest, AFailureLeavesNothingBehind) {
  EXPECT_EQ("No such file or directory", replaceFile((folder_ / "missing").string(), "new"));
  std::filesystem::create_directory(folder_ / "folder");
  EXPECT_EQ("not a regular file", replaceFile((folder_ / "folder").string(), "new"));
  std::size_t entries = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder_)) ++entries;
  EXPECT_EQ(1u, entries);
}

// The file can be written, but a new file cannot be created beside it.
TEST_F(ReplaceFileTest, TellsWhyThereIsNoNewFile) {
  EXPECT_NE("", replaceFile("/proc/self/comm", "new"));
}

TEST_F(ReplaceFileTest, StandardInputCannotBeFixed) {
  EXPECT_EQ(2, vsa("check --fix - </dev/null").status);
  EXPECT_EQ("vsa: --fix cannot change standard input\n", content("stderr.txt"));
  write("a.vsa", "lamp a: .k = 1e-05;\n");
  write("list", "a.vsa\n-\n");
  const CommandOutcome run = vsa("check --fix @list <a.vsa");
  EXPECT_EQ(2, run.status);
  EXPECT_EQ("", run.out);
  EXPECT_EQ("vsa: --fix cannot change standard input\n", run.err);
  EXPECT_EQ("lamp a: .k = 1e-05;\n", content("a.vsa"));
}

// The second file is a pipe, which cannot be replaced.
TEST_F(ReplaceFileTest, TheFilesAfterOneThatCannotBeReplacedAreFixed) {
  write("a.vsa", "lamp a: .k = 1e-05;\n");
  write("c.vsa", "lamp c: .k = 1e-05;\n");
  write("b.vsa", "lamp b: .k = 1e-05;\n");
  EXPECT_EQ(
      2,
      statusOf("cat b.vsa | " VSA_COMMAND
               " check --ignore empty-file --fix a.vsa /dev/stdin c.vsa >stdout.txt 2>stderr.txt"));
  EXPECT_EQ("", content("stderr.txt"));
  EXPECT_EQ(
      "/dev/stdin: error: cannot be changed: not a regular file [unreadable-file]\n"
      "3 files checked: 1 error, 0 warnings in 1 file; 2 fixed\n",
      content("stdout.txt"));
  EXPECT_EQ("lamp a: .k = 1.0e-05;\n", content("a.vsa"));
  EXPECT_EQ("lamp c: .k = 1.0e-05;\n", content("c.vsa"));
}

TEST_F(ReplaceFileTest, AFileWithoutSafeHintsStaysAsItIs) {
  const std::string text = "\xEF\xBB\xBFlamp a;\r\na.k = 1;\r\n\t";
  write("a.vsa", text);
  EXPECT_EQ("1 file checked: no problems found\n", vsa("check --fix a.vsa").out);
  EXPECT_EQ(text, content("a.vsa"));
}

TEST_F(ReplaceFileTest, SafeHintsAreAppliedAndTheRestIsPrinted) {
  write("a.vsa", "\xEF\xBB\xBFlamp a: .k = 1e-05;\r\n.l = 2\r\n.m = nobody;\r\n");
  const CommandOutcome run = vsa("check --fix a.vsa");
  EXPECT_EQ("\xEF\xBB\xBFlamp a: .k = 1.0e-05;\r\n.l = 2;\r\n.m = nobody;\r\n", content("a.vsa"));
  EXPECT_TRUE(run.out.starts_with("a.vsa:3:6: warning: ")) << run.out;
  EXPECT_TRUE(run.out.ends_with("1 file checked: 0 errors, 1 warning; 2 fixed\n")) << run.out;
  EXPECT_EQ(0, run.status);
}

// Each text has a hint with an edit, or had one, that would put another mistake into the text.
TEST_F(ReplaceFileTest, AnEditThatIsNotSafeIsNotApplied) {
  for (const std::string text : {
           "lamp a:\n.k = \"k=v\".len;\n",
           "lamp a:\n.k = 10x20;\n",
           "lamp a:\n.k = 1.5,2;\n",
           "lamp a:\n.k = vec2(1.5,2 3.5,4);\n",
           "lamp a: .k = vec3(1 2 3); .k = 2u;\n",
           "# version 2 of the scene\nlamp a;\n",
           "lamp a: .k = 9e99999;\n",
           "lamp a: .k = 1e5e6;\n",
           "lamp a: .k = .5.5;\n",
           "lamp a;\nk = 1;\n",
           "lamp a;\nremve a;\na.k = 1;\n",
       }) {
    write("a.vsa", text);
    vsa("check --fix a.vsa");
    EXPECT_EQ(text, content("a.vsa"));
  }
}

// What follows on the line of a mistake may only follow from it.
TEST_F(ReplaceFileTest, FollowUpsOnTheLineOfAMistakeAreNotFixed) {
  write("a.vsa", "lamp a: // comment; with ; in it\n.k = 1;\n");
  vsa("check --fix a.vsa");
  EXPECT_EQ("lamp a: # comment; with ; in it\n.k = 1;\n", content("a.vsa"));
  // Until the quotes are right, `.k = .5;` is a statement whose number lacks a digit.
  write("a.vsa", "lamp a: .l = 'a; .k = .5; b';\n");
  vsa("check --fix a.vsa");
  EXPECT_EQ("lamp a: .l = \"a; .k = .5; b\";\n", content("a.vsa"));
}

// With the right keyword, the list has decimal commas, for which there is an edit, too.
TEST_F(ReplaceFileTest, AnEditThatLeadsToAnotherOneIsNotApplied) {
  const std::string text = "lamp a: .v = vec3f(1,5 2,5 3,5);\n";
  write("a.vsa", text);
  vsa("check --fix a.vsa");
  EXPECT_EQ(text, content("a.vsa"));
}

TEST_F(ReplaceFileTest, SeveralMistakesOnALineAreFixedInSeveralRounds) {
  write("a.vsa", "lamp a: .k = 1;;; .l = 2\n.m = .5;\n");
  vsa("check --fix a.vsa");
  EXPECT_EQ("lamp a: .k = 1; .l = 2;\n.m = 0.5;\n", content("a.vsa"));
}

TEST_F(ReplaceFileTest, OfSeveralMistakesTheFirstIsFixedInEachRound) {
  write("a.vsa", "lamp a: .k = 1e-05;\n.l = 2e-05;\n.m = 3e-05;\n");
  vsa("check --fix --first a.vsa");
  EXPECT_EQ("lamp a: .k = 1.0e-05;\n.l = 2.0e-05;\n.m = 3.0e-05;\n", content("a.vsa"));
}

TEST_F(ReplaceFileTest, OnlyTheFirstMistakeIsFixedIfRulesHaveEditsBehindIt) {
  const std::string text = "lamp a: .k = 5;\n.l = vec3(1, 2) + 1;\n.m = vec3(1,5 2,5 3,5);\n";
  write("a.vsa", text);
  vsa("check --fix --first a.vsa");
  EXPECT_EQ(text, content("a.vsa"));
}

TEST_F(ReplaceFileTest, WhatIsIgnoredIsNotFixed) {
  write("a.vsa", "lamp a: .k = 1e-05;\n");
  EXPECT_EQ("1 file checked: no problems found\n", vsa("check --fix --ignore bad-token a.vsa").out);
  EXPECT_EQ("lamp a: .k = 1e-05;\n", content("a.vsa"));
}

}  // namespace

}  // namespace vsa_tests
