// Tests of ShortListSource: what it delivers for long lists and buffers, how it divides a text into
// parts, and that reading its text finds the same mistakes as reading the original text.
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
  EXPECT_EQ(delivered("# version: 2\rt n:\n.a = vec3(1,2 3);"),
            "# version: 2\nt n:\n.a = vec3(1,2 3);\n");
}

// The scene of the check would keep all comments. Only a version can cause a diagnostic.
TEST(ShortListSourceTest, LeavesOutOtherComments) {
  EXPECT_EQ(delivered("# c\nt n: # time: 1\n.a = 1; # subversion: 2\n# versions\n"),
            "t n:\n.a = 1;\n# subversion: 2\n");
  EXPECT_EQ(delivered("t # c\nn;"), "t # c\nn;\n");
  EXPECT_EQ(readShort("# c\n# version: x\nt n;").warningCount, 1U);
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

// After a buffer, the source inserts an assignment of an empty buffer, so that the scene keeps no
// elements. The exception is `n.b[*] = ...`, because each such assignment appends an element to the
// array. The scene keeps the numbers of such a buffer. Therefore they count for the size of the
// part.
TEST(ShortListSourceTest, KeepsBuffersThatAreAppended) {
  EXPECT_EQ(delivered("t n; n.b[*] = byte[2] {1 2};"), "t n;\nn.b[*] = byte[2] {1 2};\n");
  const std::string text = "t n; n.b[*][*] = byte[1] {1}; n.b[*][*] = 2; n.b[1][*] = 3;";
  EXPECT_TRUE(readShort(text).isComplete());
  const auto isOnePart = [](const std::string& path) {
    const std::string buffer = "t n; " + path + " = byte[1000] {1}; t m; n.c = 1;";
    StepSource source(buffer, 1 << 16);
    return checkReading(source, {}, 500).isComplete;
  };
  EXPECT_TRUE(isOnePart("n.b"));
  EXPECT_FALSE(isOnePart("n.b[*]"));
}

// A source may deliver a list in one piece or in several. The result must be the same.
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

std::vector<std::string> parts(const std::string& text, std::uint64_t partBytes = 1) {
  StepSource source(text, 1 << 16);
  ShortListSource lists(source, partBytes);
  std::vector<std::string> all;
  std::string block(1000, '\0');
  do {
    all.emplace_back();
    while (const std::size_t count = lists.read(block)) all.back().append(block.data(), count);
  } while (lists.nextPart());
  return all;
}

using Parts = std::vector<std::string>;

TEST(ShortListSourceTest, BeginsPartsWithDeclarations) {
  EXPECT_EQ(parts("t n; n.a = 1; # c\nn.b = m; t m: .a = 2; s o; o.a = 3;"),
            (Parts{"t n;\nn.a = 1;\nn.b = m;\n", "t m:\n.a = 2;\n", "s o;\no.a = 3;\n"}));
  EXPECT_EQ(parts("t n; with n: .a = 1; t n; t m;"),
            (Parts{"t n;\nwith n:\n.a = 1;\nt n;\n", "t m;\n"}));
  EXPECT_EQ(parts("define n; t m; remove m; t m;"),
            (Parts{"define n;\n", "t m;\nremove m;\n", "t m;\n"}));
}

// Each declaration has three bytes without its blanks. The first one of a later part does not
// count.
TEST(ShortListSourceTest, EndsPartsAtTheirSize) {
  const std::string text = "t a; t b; t c; t d; t e; t f; t g;";
  EXPECT_EQ(parts(text, 6), (Parts{"t a;\nt b;\n", "t c;\nt d;\nt e;\n", "t f;\nt g;\n"}));
  EXPECT_EQ(parts(text, 7), (Parts{"t a;\nt b;\nt c;\n", "t d;\nt e;\nt f;\nt g;\n"}));
}

// Each part is read into a separate scene. These statements change a node of an earlier part. They
// may fail because of a value that the earlier part assigned, but the new scene does not have that
// value. Therefore the source ends the text before such a statement.
TEST(ShortListSourceTest, EndsWhereANodeOfAnEarlierPartIsChanged) {
  for (const char* const statement :
       {"n.a = 2;", "n.a |= m.o;", "REMOVE n;", "t n;", "t n:", "with n: .a = 2;", ".a = 2;",
        "t n; n.a = 2; m.b = 3;", "t n: .a = 2; REMOVE m;"}) {
    const std::string text = std::string("t n: .a = 1; t m; ") + statement + " t o;";
    StepSource source(text, 1 << 16);
    ShortListSource lists(source, 1);
    std::string delivered, block(1000, '\0');
    do {
      while (const std::size_t count = lists.read(block)) delivered.append(block.data(), count);
    } while (lists.nextPart());
    EXPECT_TRUE(lists.endedEarly()) << statement;
    EXPECT_EQ(delivered, "t n:\n.a = 1;\nt m;\n") << statement;
  }
}

// Even for very small parts, the result is the same as for the whole text.
TEST(ShortListSourceTest, FindsMistakesInLaterParts) {
  const auto isComplete = [](const std::string& text) {
    StepSource source(text, 1 << 16);
    return checkReading(source, {}, 1).isComplete;
  };
  EXPECT_TRUE(isComplete("t n: .a = 1; t m; m.b = n; m.c = float[1] {2};"));
  EXPECT_FALSE(isComplete("t n: .a = 1; t m; k.b = m;"));
  EXPECT_FALSE(isComplete("t n; remove n; n.a = 1;"));
  EXPECT_FALSE(isComplete("t n; n.a = 1 2; t m;"));
  EXPECT_FALSE(isComplete("t n; n.a = 1.5; t m; n.a.b = 2;"));
}

std::string manyNodes(int count, const std::string& list) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += "t n" + std::to_string(i) + ": .a[*] = vec3(" + list + "); .b = 1;";
  }
  return text;
}

// The parts do not depend on white space, so that a formatted text has the same parts.
TEST(ShortListSourceTest, EndsPartsWhateverTheWhiteSpace) {
  const auto readingOf = [](const std::string& list) {
    const std::string text = manyNodes(100, list);
    StepSource source(text, 1 << 16);
    return checkReading(source, {}, 500);
  };
  EXPECT_TRUE(readingOf("1 2 3").isComplete);
  EXPECT_EQ(readingOf("1 2 3"), readingOf("  1,  2\n\n  3"));
}

// The counts of the parts add up to the counts of the whole text, because each statement is in one
// part.
TEST(ShortListSourceTest, AddsUpWhatPartsMake) {
  const std::string text = manyNodes(1000, "1 2 3");
  StepSource whole(text, 1 << 16), inParts(text, 1 << 16);
  EXPECT_EQ(checkReading(whole), checkReading(inParts, {}, 100));
}

// The last assignment declares all elements that are left, however many numbers there are.
TEST(ShortListSourceTest, KeepsACountThatIsTooLarge) {
  std::string list = "{";
  for (int i = 0; i < 65536; ++i) list += "1 ";
  for (const std::string count : {"99999999999", "18446744073709551615"}) {
    const std::string text = "t n; n.f = float[" + count + "] {1 1}; t m;";
    EXPECT_EQ(readShort(text).status, vsa::readText(text).status) << count;
    EXPECT_FALSE(readShort(text).isComplete()) << count;
  }
  EXPECT_EQ(readShort("t n; n.f = float[131072] " + list + "};").warningCount, 1U);
}

TEST(ShortListSourceTest, EndsAtAnEndMark) {
  EXPECT_EQ(readShort("t n;\xFF t m;").status, vsa::ReadStatus::CutOff);
}

}  // namespace

}  // namespace vsa_tools
