// ShortListSource: a reading of what it delivers succeeds, fails and makes as that of the text.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <vsa/read.h>
#include "tests/syntax/syntax_source.h"
#include "tools/vsa/fmt/reading/reading_check.h"
#include "tools/vsa/fmt/reading/short_list_source.h"

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
  EXPECT_EQ(delivered("# c\rt n:\n.a = vec3(1,2 3);"), "# c\nt n:\n.a = vec3(1,2 3);\n");
}

TEST(ShortListSourceTest, SplitsLongLists) {
  const std::string text = "t n; n . b = float [200000] {" + numbers(200000) + "}; t m;";
  const std::string split = delivered(text);
  EXPECT_NE(split.find("\nn.b = float[65536] { 1.5 1.5"), std::string::npos);
  EXPECT_NE(split.find("n.b = float[3392] { 1.5"), std::string::npos);
  EXPECT_NE(split.find(";\nn.b = float[0] {};\nt m;\n"), std::string::npos);
  EXPECT_TRUE(readShort(text).isComplete());
}

TEST(ShortListSourceTest, EmptiesBuffers) {
  EXPECT_EQ(delivered("t n; n.b = float[2] {1 2}; n.c = 1;"),
            "t n;\nn.b = float[2] {1 2};\nn.b = float[0] {};\nn.c = 1;\n");
  EXPECT_EQ(delivered("t n: .b = byte[2] {.00};"), "t n:\n.b = byte[2] {.00};\n.b = byte[0] {};\n");
  const vsa::ReadResult read = readShort("t n; n.b = vec3f[2] {1 2 3 4 5 6};");
  EXPECT_TRUE(read.isComplete());
  EXPECT_EQ(read.scene["n"]["b"].buffer().count(), 0U);
}

// Another assignment to the path would append another element. Such buffers fill the part.
TEST(ShortListSourceTest, KeepsBuffersThatAreAppended) {
  EXPECT_EQ(delivered("t n; n.b[*] = byte[2] {1 2};"), "t n;\nn.b[*] = byte[2] {1 2};\n");
  const std::string text = "t n; n.b[*][*] = byte[1] {1}; n.b[*][*] = 2; n.b[1][*] = 3;";
  EXPECT_TRUE(readShort(text).isComplete());
  StepSource source("t n; n.b[*] = byte[1000] {1}; n.c = 1;", 1 << 16);
  EXPECT_EQ(checkReading(source, {}, 500).nodes, 2U);
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

std::vector<std::string> parts(const std::string& text) {
  StepSource source(text, 1 << 16);
  ShortListSource lists(source, 1);
  std::vector<std::string> all;
  std::string block(1000, '\0');
  do {
    all.emplace_back();
    while (const std::size_t count = lists.read(block)) all.back().append(block.data(), count);
  } while (lists.nextPart());
  return all;
}

using Parts = std::vector<std::string>;

TEST(ShortListSourceTest, DefinesNodesAgainInEachPart) {
  EXPECT_EQ(parts("t n; n.a = 1; m.a = 2; n.b.c[3] |= m.o;"),
            (Parts{"t n;\n", "define n;\nn.a = 1;\n", "m.a = 2;\n", "define n;\nn.b.c[3] |= m.o;\n",
                   ""}));
  EXPECT_EQ(parts("define n; t n; t n;"), (Parts{"define n;\n", "t n;\n", "t n;\n", ""}));
}

TEST(ShortListSourceTest, KeepsTheWithNodeInEachPart) {
  EXPECT_EQ(parts("t n: .a = 1; t m; .b = 2; with m: # c\n.c = 3;"),
            (Parts{"t n:\n", "with n:\n.a = 1;\n", "with n:\nt m;\n", "with n:\n.b = 2;\n",
                   "with n:\nwith m:\n", "with m:\n# c\n", "with m:\n.c = 3;\n", "with m:\n"}));
}

TEST(ShortListSourceTest, DoesNotDefineRemovedNodes) {
  EXPECT_EQ(parts("t n; REMOVE n; n.a = 1;"), (Parts{"t n;\n", "REMOVE n;\n", "n.a = 1;\n", ""}));
  EXPECT_EQ(parts("t n; remove n; t n; n.a = 1;").back(), "");
}

TEST(ShortListSourceTest, FindsMistakesInLaterParts) {
  const auto isComplete = [](const std::string& text) {
    StepSource source(text, 1 << 16);
    return checkReading(source, {}, 1).isComplete;
  };
  EXPECT_TRUE(isComplete("t n: .a = 1; n.a = 2; t m; n.b = m; m.c = float[1] {2};"));
  EXPECT_FALSE(isComplete("t n: .a = 1; n.a = 2; t m; k.b = m;"));
  EXPECT_FALSE(isComplete("t n; remove n; n.a = 1;"));
  EXPECT_FALSE(isComplete("t n; n.a = 1 2; t m;"));
}

// A formatted text has the same parts.
TEST(ShortListSourceTest, EndsPartsWhateverTheWhiteSpace) {
  const auto elementsOfParts = [](const std::string& list) {
    std::string text = "t n:";
    for (int i = 0; i < 100; ++i) text += " .a[*] = vec3(" + list + ");";
    StepSource source(text, 1 << 16);
    return checkReading(source, {}, 500);
  };
  EXPECT_EQ(elementsOfParts("1 2 3"), elementsOfParts("  1,  2\n\n  3"));
}

// Each statement belongs to one part, and the parts have as many values as the text.
TEST(ShortListSourceTest, AddsUpWhatPartsMake) {
  std::string text = "t n:";
  for (int i = 0; i < 1000; ++i) text += " .a" + std::to_string(i) + " = 1;";
  StepSource whole(text, 1 << 16), inParts(text, 1 << 16);
  const ReadingCheck one = checkReading(whole), many = checkReading(inParts, {}, 100);
  EXPECT_TRUE(many.isComplete);
  EXPECT_EQ(one.values, many.values);
  EXPECT_EQ(one.nodes, 1U);
  EXPECT_GT(many.nodes, 50U);
}

TEST(ShortListSourceTest, EndsAtAnEndMark) {
  EXPECT_EQ(readShort("t n;\xFF t m;").status, vsa::ReadStatus::CutOff);
}

}  // namespace

}  // namespace vsa_tools
