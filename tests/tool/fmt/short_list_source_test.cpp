// ShortListSource: a reading of what it delivers succeeds, fails and makes as that of the text.
#include <gtest/gtest.h>

#include <string>

#include <vsa/read.h>
#include "tests/syntax/syntax_source.h"
#include "tools/vsa/fmt/layout/short_list_source.h"

namespace vsa_tools {

namespace {

using vsa_tests::StepSource;

vsa::ReadResult readShort(const std::string& text) {
  StepSource source(text, 1 << 16);
  ShortListSource lists(source);
  return vsa::readSource(lists);
}

std::string delivered(const std::string& text) {
  StepSource source(text, 1 << 16);
  ShortListSource lists(source);
  std::string all, block(1000, '\0');
  while (const std::size_t count = lists.read(block)) all.append(block.data(), count);
  return all;
}

std::string numbers(int count, const char* number = "1.5") {
  std::string text;
  for (int i = 0; i < count; ++i) (text += number) += ' ';
  return text;
}

TEST(ShortListSourceTest, KeepsOtherTokens) {
  EXPECT_EQ(delivered("# c\rt n:\n.a = vec3(1,2 3);"), " # c\n t n :\n. a = vec3 (1,2 3) ;");
}

TEST(ShortListSourceTest, SplitsLongLists) {
  const std::string text = "t n; n . b = float [200000] {" + numbers(200000) + "}; t m;";
  const std::string split = delivered(text);
  EXPECT_NE(split.find("n . b = float [65536] { 1.5 1.5"), std::string::npos);
  EXPECT_NE(split.find("n . b = float [3392] { 1.5"), std::string::npos);
  EXPECT_NE(split.find("; n . b = float [0] {}; t m ;"), std::string::npos);
  EXPECT_TRUE(readShort(text).isComplete());
}

TEST(ShortListSourceTest, EmptiesBuffers) {
  EXPECT_EQ(delivered("t n; n.b = float[2] {1 2}; n.c = 1;"),
            " t n ; n . b = float [2] {1 2} ; n . b = float [0] {}; n . c = 1 ;");
  EXPECT_EQ(delivered("t n: .b = byte[2] {.00};"),
            " t n : . b = byte [2] {.00} ; . b = byte [0] {};");
  const vsa::ReadResult read = readShort("t n; n.b = vec3f[2] {1 2 3 4 5 6};");
  EXPECT_TRUE(read.isComplete());
  EXPECT_EQ(read.scene["n"]["b"].buffer().count(), 0U);
}

// Whether a list comes in pieces depends on the source, and must not matter.
TEST(ShortListSourceTest, DeliversTheSameOfListsInPieces) {
  const std::string list = numbers(30000, "1.5, (2 3) ") + "{4} {} 5";
  for (const char* const count : {"90000", "70000", "9", "200000"}) {
    const std::string text = std::string("t n; n.b = float[") + count + "] {" + list + "}; t m;";
    const std::string blanks(200000, ' ');
    EXPECT_EQ(readShort(text).applied.values, readShort(blanks + text).applied.values);
    EXPECT_EQ(readShort(text).status, vsa::readText(text).status) << count;
    EXPECT_EQ(readShort(text).status, readShort(blanks + text).status) << count;
  }
}

TEST(ShortListSourceTest, BoundsListsOfBlanks) {
  const std::string text = "t n; n.b = float[70000] {" +
                           numbers(70000, "1                                        ") + "};";
  EXPECT_LT(delivered(text).size(), 200000U);
  EXPECT_TRUE(readShort(text).isComplete());
}

TEST(ShortListSourceTest, FindsTheMistakesOfLongLists) {
  using vsa::ReadStatus;
  const std::string list = numbers(199998);
  const auto text = [](const std::string& count, const std::string& body) {
    return "t n; n.b = vec3f[" + count + "] {" + body + "};";
  };
  EXPECT_EQ(readShort(text("66666", list)).status, ReadStatus::Complete);
  EXPECT_EQ(readShort(text("66666", list)).warningCount, 0U);
  EXPECT_EQ(readShort(text("66665", list)).status, ReadStatus::StoppedByError);
  EXPECT_EQ(readShort(text("70000", list)).status, ReadStatus::Complete);
  EXPECT_EQ(readShort(text("70000", list)).warningCount, 1U);
  EXPECT_EQ(readShort(text("66666", list + "1-")).status, ReadStatus::StoppedByError);
  EXPECT_EQ(readShort(text("66666", "1e " + list)).status, ReadStatus::StoppedByError);
  EXPECT_EQ(readShort("t n; n.b = vec3f[66666] {" + list).status, ReadStatus::CutOff);
  EXPECT_EQ(readShort("t n; n.b = vec3f[66666] {" + list + "!").status, ReadStatus::StoppedByError);
}

TEST(ShortListSourceTest, PassesOnWhatItCannotSplit) {
  const std::string longName(300000, 'n');
  for (const std::string& text :
       {"t " + longName + "; " + longName + ".b = float[100000] {" + numbers(100000) + "};",
        "t n; n.b = byte[9] {." + std::string(300000, '7') + "};",
        "t n; n.b = {" + numbers(100000) + "};",
        "t n; n.b = nosuch[100000] {" + numbers(100000) + "};"}) {
    EXPECT_EQ(readShort(text).status, vsa::readText(text).status) << text.substr(0, 40);
  }
}

TEST(ShortListSourceTest, EndsAtAnEndMark) {
  EXPECT_EQ(readShort("t n;\xFF t m;").status, vsa::ReadStatus::CutOff);
}

}  // namespace

}  // namespace vsa_tools
