// Tests of the sizes of opened files.
#include "tools/vsa/input/input_file.h"

#include <gtest/gtest.h>

#include "tests/tool/command_fixture.h"

namespace vsa_tools {

namespace {

using InputFileTest = vsa_tests::CommandFixture;

TEST_F(InputFileTest, ARegularFileHasItsSize) {
  write("a.vsa", "lamp a;\n");
  EXPECT_EQ(openInput((folder_ / "a.vsa").string()).source->size(), 8U);
}

// Some files of the system have contents, although their size is 0.
TEST_F(InputFileTest, TheSizeZeroIsUnknown) {
  write("a.vsa", "");
  EXPECT_FALSE(openInput((folder_ / "a.vsa").string()).source->size().has_value());
}

}  // namespace

}  // namespace vsa_tools
