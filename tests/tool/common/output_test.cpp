// Tests of output that cannot be written, closed descriptors, and unusual file names.
#include "tools/vsa/common/output/output.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/tool/command_fixture.h"

namespace vsa_tools {

namespace {

using OutputTest = vsa_tests::CommandFixture;

constexpr const char* SCENE = "lamp sun: .power = 2.5;\n";

TEST_F(OutputTest, ThatCannotBeWrittenIsStatusTwo) {
  write("a.vsa", SCENE);
  for (const char* command : {"dump", "convert"}) {
    const std::string line = std::string(VSA_COMMAND " ") + command + " a.vsa ";
    EXPECT_EQ(statusOf(line + ">/dev/full 2>stderr.txt"), 2) << command;
    EXPECT_NE(content("stderr.txt").find("No space left on device"), std::string::npos) << command;
    EXPECT_EQ(statusOf(line + ">&- 2>stderr.txt"), 2) << command;
    EXPECT_NE(content("stderr.txt").find("Bad file descriptor"), std::string::npos) << command;
    EXPECT_EQ(statusOf(line + "<&- >&- 2>&-"), 2) << command;
  }
}

TEST_F(OutputTest, MessagesThatCannotBeWrittenAreStatusTwo) {
  write("a.vsa", "lamp sun: .k = 1;\n.k = 2.5;\n\"cut");
  EXPECT_EQ(statusOf(VSA_COMMAND " dump a.vsa 2>/dev/full >stdout.txt"), 2);
  EXPECT_EQ(statusOf(VSA_COMMAND " dump a.vsa 2>&- >stdout.txt"), 2);
}

// A file that is opened must not get the number of a closed standard descriptor.
TEST_F(OutputTest, ClosedDescriptorsAreNotTakenByFiles) {
  write("a.vsa", SCENE);
  statusOf(VSA_COMMAND " dump a.vsa <&- >&- 2>stderr.txt");
  EXPECT_EQ(content("a.vsa"), SCENE);
  EXPECT_EQ(statusOf(VSA_COMMAND " dump - <&- >stdout.txt 2>stderr.txt"), 2);
}

TEST_F(OutputTest, UnusualFileNamesAreRead) {
  for (const char* name : {"++", "[x]", "a\\b"}) {
    write(name, SCENE);
    EXPECT_EQ(vsa("dump '" + std::string(name) + "'").status, 0) << name;
  }
}

TEST_F(OutputTest, AFileNameStartsNoCommandOfACiRunner) {
  for (const char* name : {"::error::x", "##vso[task.x]"}) {
    write(name, "\"cut");
    const std::string said = vsa("dump '" + std::string(name) + "'").err;
    EXPECT_FALSE(said.empty());
    EXPECT_FALSE(said.starts_with("::")) << said;
    EXPECT_EQ(said.find("##vso["), said.npos) << said;
  }
}

}  // namespace

}  // namespace vsa_tools
