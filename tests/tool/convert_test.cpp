// Tests of vsa convert: the text that it writes, the output file, and its exit status.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/text.h"

namespace {

namespace fs = std::filesystem;

struct ConvertOutcome {
  int status;
  std::string out, err;
};

class ConvertTest : public testing::Test {
 protected:
  ConvertTest() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    folder = fs::path(testing::TempDir()) /
             ("vsa_convert_" + std::to_string(::getpid()) + '_' + test->name());
    fs::create_directories(folder);
  }
  ~ConvertTest() override { fs::remove_all(folder); }

  void write(const std::string& name, const std::string& text) const {
    std::ofstream(folder / name, std::ios::binary) << text;
  }

  std::string content(const std::string& name) const { return vsa_tests::contentOf(folder / name); }

  ConvertOutcome convert(const std::string& arguments) const {
    const std::string line = "cd '" + folder.string() + "' && " VSA_COMMAND " convert " +
                             arguments + " >stdout.txt 2>stderr.txt";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content("stdout.txt"),
            content("stderr.txt")};
  }

  fs::path folder;
};

TEST_F(ConvertTest, WritesToStandardOutput) {
  write("a.vsa", "# hi\nthing n: .x=1.0 ;.b = byte [3]{1,2,3};");
  const ConvertOutcome run = convert("a.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "# hi\n\nthing n:\n  .x = 1.0;\n  .b = byte[3] {1 2 3};\n");
  EXPECT_EQ(run.err, "");
}

TEST_F(ConvertTest, ReadsStandardInput) {
  write("a.vsa", "thing n;");
  EXPECT_EQ(convert("- <a.vsa").out, "thing n;\n");
}

TEST_F(ConvertTest, WritesAFileAndReplacesItsInput) {
  write("a.vsa", "thing   n;");
  EXPECT_EQ(convert("a.vsa -o b.vsa").status, 0);
  EXPECT_EQ(content("b.vsa"), "thing n;\n");
  const ConvertOutcome run = convert("a.vsa -o a.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(content("a.vsa"), "thing n;\n");
}

TEST_F(ConvertTest, CompressesAndExpands) {
  const std::string plain = "thing n:\n  .b = rgb8[2] {1 2 3 1 2 3};\n";
  write("a.vsa", plain);
  EXPECT_EQ(convert("--compress a.vsa -o b.vsa").status, 0);
  EXPECT_NE(content("b.vsa").find(".b = rgb8[2] {.78"), std::string::npos);
  EXPECT_EQ(convert("--expand b.vsa").out, plain);
  EXPECT_EQ(convert("b.vsa").out, plain);
  EXPECT_EQ(convert("--expand --compress b.vsa").status, 2);
}

TEST_F(ConvertTest, Options) {
  write("a.vsa", "# c\nt b: .l = a; .f = float[3] {1 2 3}; t a;");
  EXPECT_EQ(convert("--full-paths --by-name --links-last --numbers 2 --no-header a.vsa").out,
            "t a;\nt b;\nb.l = null;\nb.f = float[3] {1 2\n    3};\nb.l = a;\n");
  EXPECT_EQ(convert("--width 10 --no-header a.vsa").out,
            "t b:\n  .l = a;\n  .f = float[3] {1\n    2 3};\nt a;\n");
}

TEST_F(ConvertTest, NegativeNumbersAreWrongUsage) {
  write("a.vsa", "t a;");
  for (const char* option : {"--width -1", "--numbers -1"}) {
    EXPECT_EQ(convert(option + std::string(" a.vsa")).status, 2) << option;
  }
}

TEST_F(ConvertTest, FileThatIsNotReadCompletelyIsNotWritten) {
  write("b.vsa", "old");
  for (const std::string text : {"thing n; n.x = ;", "thing n; n.x = 1;\xFF", "t n; \"cut"}) {
    write("a.vsa", text);
    const ConvertOutcome run = convert("a.vsa -o b.vsa");
    EXPECT_EQ(run.status, 1) << text;
    EXPECT_NE(run.err.find("a.vsa:"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("nothing was written"), std::string::npos) << run.err;
    EXPECT_EQ(content("b.vsa"), "old");
  }
}

TEST_F(ConvertTest, WarningsArePrintedAndTheSceneIsWritten) {
  write("a.vsa", "t n: .x = 1; .x = 2.5;");
  const ConvertOutcome run = convert("a.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "t n:\n  .x = 3;\n");
  EXPECT_NE(run.err.find("a.vsa:1:22: warning: "), std::string::npos) << run.err;
}

// At most 1000 problems are printed.
TEST_F(ConvertTest, FurtherProblemsAreCounted) {
  std::string text = "t n:\n";
  for (int i = 0; i < 1001; ++i) {
    const std::string input = ".x" + std::to_string(i) + "[0][0]";
    text.append(input).append(" |= null; ").append(input).append(" = 5;\n");
  }
  write("a.vsa", text);
  const ConvertOutcome run = convert("--lossy a.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.err.ends_with("\nvsa: and 1 more\n")) << run.err;
  write("a.vsa", text.substr(0, text.find(".x1000[")));
  EXPECT_EQ(convert("--lossy a.vsa").err.find(" more"), std::string::npos);
}

TEST_F(ConvertTest, WhatATextCannotCarryIsNamed) {
  write("a.vsa", "t n: .x[0][0] |= null; .x[0][0] = 5; .y = 1;");
  const ConvertOutcome run = convert("a.vsa -o b.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("a.vsa: error: n.x[0]: no element gives the array its element type"),
            std::string::npos)
      << run.err;
  EXPECT_FALSE(fs::exists(folder / "b.vsa"));
  const ConvertOutcome lossy = convert("--lossy a.vsa");
  EXPECT_EQ(lossy.status, 0);
  EXPECT_EQ(lossy.out, "t n:\n  .x[0][0] |= null;\n  .y = 1;\n");
  EXPECT_NE(lossy.err.find("a.vsa: warning: n.x[0]: "), std::string::npos) << lossy.err;
}

TEST_F(ConvertTest, FilesThatCannotBeOpenedOrWritten) {
  write("a.vsa", "t n;");
  EXPECT_EQ(convert("none.vsa").status, 2);
  EXPECT_EQ(convert("a.vsa -o none/b.vsa").status, 2);
  EXPECT_EQ(convert("a.vsa -o /dev/full").status, 2);
  const std::string line =
      VSA_COMMAND " convert '" + (folder / "a.vsa").string() + "' >/dev/full 2>/dev/null";
  EXPECT_EQ(WEXITSTATUS(std::system(line.c_str())), 2);
}

}  // namespace
