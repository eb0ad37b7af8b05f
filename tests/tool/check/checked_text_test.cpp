// Tests of which texts vsa check keeps in memory.
#include "tools/vsa/check/text/checked_text.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/tool/command_fixture.h"

namespace vsa_tests {

namespace {

using CheckedTextTest = CommandFixture;
using vsa_tools::CheckedText;

TEST_F(CheckedTextTest, AFileOfTheMaximumSizeIsKept) {
  const std::string bytes = "\xEF\xBB\xBFlamp a;\n";
  write("a.vsa", bytes);
  const std::string path = (folder_ / "a.vsa").string();
  EXPECT_TRUE(CheckedText(path, bytes.size() + 1).isKept());
  EXPECT_TRUE(CheckedText(path, bytes.size()).isKept());
  EXPECT_EQ(CheckedText(path, bytes.size()).text(), "lamp a;\n");
  EXPECT_FALSE(CheckedText(path, bytes.size() - 1).isKept());
}

TEST_F(CheckedTextTest, APipeOfTheMaximumSizeIsKept) {
  const std::string path = (folder_ / "pipe").string();
  for (const auto& [maxKept, isKept] :
       {std::pair(9, true), std::pair(8, true), std::pair(7, false)}) {
    statusOf("rm -f pipe; mkfifo pipe; printf 'lamp a;\\n' >pipe &");
    const CheckedText text(path, static_cast<std::uint64_t>(maxKept));
    EXPECT_EQ(text.isKept(), isKept) << maxKept;
    EXPECT_TRUE(std::string("lamp a;\n").starts_with(text.text())) << text.text();
  }
}

}  // namespace

}  // namespace vsa_tests
