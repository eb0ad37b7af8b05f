// Tests of positions in texts that are read in many blocks.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/disk_file.h"

namespace vsa_tests {

namespace {

using vsa::ReadOutcome;
using vsa::ReadResult;

/// A text of some 2 MB with many problems, and the offsets at which their ranges begin: in `values`
/// those of narrowed values, in `links` those of links to a missing node.
struct LongText {
  LongText() {
    text = "lamp sun:\n.n = 1;\n";
    for (int i = 0; text.size() < 2'000'000; ++i) {
      text += ".a" + std::to_string(i) + " = \"" + std::string(i % 97, '-') + "\n\";";
      if (i % 5 == 0) text += '\n';
      if (i % 997 == 0) addProblem(".n = ", "2.5", ";");
      if (i % 1499 == 0) addProblem(".l" + std::to_string(i) + " = ", "gone", ";\n");
      if (i % 4999 == 0) text += std::string(70'000, ' ');
    }
  }

  void addProblem(const std::string& before, const std::string& concerned,
                  const std::string& after) {
    text += before;
    (concerned == "gone" ? links : values).push_back(text.size());
    text += concerned + after;
  }

  std::string text;
  std::vector<std::size_t> values;
  std::vector<std::size_t> links;
};

const LongText& longText() {
  static const LongText made;
  return made;
}

void expectPosition(const vsa::TextPosition& position, std::string_view text) {
  const std::string_view before = text.substr(0, position.offset);
  const auto lines = static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n'));
  EXPECT_EQ(position.line, lines + 1) << position.offset;
  const std::size_t feed = before.rfind('\n');
  EXPECT_EQ(position.column, before.size() - feed) << position.offset;
}

void expectProblems(const ReadOutcome& outcome, bool hasLinks) {
  const LongText& expected = longText();
  std::vector<std::size_t> values;
  std::vector<std::size_t> links;
  for (const vsa::Diagnostic& found : outcome.diagnostics) {
    const bool isLink = found.id == vsa::DiagnosticId::NoNodeToAssign;
    (isLink ? links : values).push_back(found.range.begin.offset);
    if (isLink && !hasLinks) continue;
    EXPECT_EQ(found.range.end.offset - found.range.begin.offset, isLink ? 4U : 3U);
    expectPosition(found.range.begin, expected.text);
    expectPosition(found.range.end, expected.text);
  }
  std::sort(links.begin(), links.end());
  EXPECT_EQ(values, expected.values);
  if (hasLinks) {
    EXPECT_EQ(links, expected.links);
  }
}

TEST(LongText, HasTheSamePositionsFromMemory) {
  expectProblems(vsa::readText(longText().text), true);
}

TEST(LongText, HasTheSamePositionsFromAFile) {
  const DiskFile file(longText().text);
  expectProblems(vsa::readFile(file.path()), true);
  const DiskFile marked("\xEF\xBB\xBF" + longText().text);
  expectProblems(vsa::readFile(marked.path()), true);
}

TEST(LongText, HasTheSamePositionsFromASource) {
  for (const std::size_t bytesPerRead : {0, 1000, 100'001}) {
    TestSource source(longText().text, bytesPerRead);
    const ReadResult result = vsa::readSource(source);
    expectProblems(result, false);
    // A link from the beginning of the text is reported when that part of the text is not in memory
    // any more. Its position must still be inside the text.
    for (const vsa::Diagnostic& found : result.diagnostics) {
      EXPECT_LE(found.range.end.offset, longText().text.size());
      EXPECT_GE(found.range.begin.line, 1U);
      EXPECT_GE(found.range.begin.column, 1U);
    }
  }
}

TEST(LongText, HasTheSamePositionsFromAPipe) {
  const DiskFile place("");
  const std::string path = place.path() + ".pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  std::thread writer([&] { std::ofstream(path, std::ios::binary) << longText().text; });
  const ReadResult result = vsa::readFile(path);
  writer.join();
  std::remove(path.c_str());
  EXPECT_TRUE(result.isComplete());
  expectProblems(result, false);
}

// The source keeps neither the beginning of the line nor the line before it.
TEST(LongText, LineMayBeLongerThanWhatASourceKeeps) {
  std::string text = "lamp sun:\n.n = 1;";
  while (text.size() < 4'000'000) text += ".s = \"" + std::string(1000, '-') + "\";";
  const std::size_t at = text.size() + 5;
  text += ".n = 2.5;";
  TestSource source(text);
  const ReadResult result = vsa::readSource(source);
  ASSERT_EQ(result.diagnostics.size(), 1U);
  EXPECT_EQ(result.diagnostics[0].range.begin.offset, at);
  EXPECT_EQ(result.diagnostics[0].range.end.offset, at + 3);
  expectPosition(result.diagnostics[0].range.begin, text);
}

TEST(LongText, StatementMayBeLongerThanWhatASourceKeeps) {
  std::string text = "mesh m;\nm.b = float[1] {";
  while (text.size() < 4'000'000) text += "1 ";
  text += "};\n";
  TestSource source(text);
  const ReadResult result = vsa::readSource(source);
  ASSERT_EQ(result.diagnostics.size(), 1U);
  // The number that is too many is not in memory any more. So the range is the closing bracket of
  // the list, where the parser detects the problem.
  EXPECT_EQ(result.diagnostics[0].range.begin.offset, text.size() - 3);
  EXPECT_EQ(result.diagnostics[0].range.end.offset, text.size() - 2);
  const ReadResult inMemory = vsa::readText(text);
  EXPECT_EQ(inMemory.diagnostics[0].range.begin.offset, 26U);
  EXPECT_EQ(inMemory.diagnostics[0].numberIndex, 1U);
  const DiskFile file(text);
  EXPECT_EQ(vsa::readFile(file.path()).diagnostics[0].range.begin.offset, 26U);
}

}  // namespace

}  // namespace vsa_tests
