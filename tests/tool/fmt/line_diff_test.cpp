// Tests of matchLines() and printDiff(): the matched lines are equal and in order, and the printed
// differences have the form of a unified diff.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tools/vsa/fmt/diff/line_diff.h"
#include "tools/vsa/fmt/text_file.h"

namespace vsa_tools {

namespace {

using Hashes = std::vector<std::uint64_t>;

TEST(MatchLinesTest, Matches) {
  using Matches = std::vector<MatchedLines>;
  EXPECT_EQ(matchLines({1, 2, 3}, {1, 2, 3}), (Matches{{0, 0, 3}}));
  EXPECT_EQ(matchLines({1, 2, 3}, {1, 9, 3}), (Matches{{0, 0, 1}, {2, 2, 1}}));
  EXPECT_EQ(matchLines({}, {1}), Matches{});
  EXPECT_EQ(matchLines({7, 1, 7, 2, 7}, {8, 1, 8, 2, 8}), (Matches{{1, 1, 1}, {3, 3, 1}}));
}

TEST(MatchLinesTest, MatchesAreInOrderAndEqual) {
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    Hashes a(random() % 20), b(random() % 20);
    for (auto& line : a) line = random() % 12;
    for (auto& line : b) line = random() % 12;
    std::size_t atA = 0, atB = 0;
    for (const MatchedLines& match : matchLines(a, b)) {
      ASSERT_GE(match.a, atA);
      ASSERT_GE(match.b, atB);
      ASSERT_GT(match.count, 0U);
      ASSERT_LE(match.a + match.count, a.size());
      ASSERT_LE(match.b + match.count, b.size());
      for (std::size_t i = 0; i < match.count; ++i) ASSERT_EQ(a[match.a + i], b[match.b + i]);
      atA = match.a + match.count;
      atB = match.b + match.count;
    }
  }
}

// The line that is unique in both texts divides them, and only the part before it (or after it)
// has a line that is unique there. So each line is found one level deeper than the one before.
TEST(MatchLinesTest, TheDepthOfTheSearchIsBounded) {
  Hashes a{1}, b{2};
  for (std::uint64_t unique = 1000; unique < 2000; ++unique) {
    a.insert(a.end(), {unique, unique - 1, 2 * unique + 10000});
    b.insert(b.end(), {unique, 2 * unique + 10001});
  }
  EXPECT_EQ(matchLines(a, b).size(), 64U);
  std::reverse(a.begin(), a.end());
  std::reverse(b.begin(), b.end());
  EXPECT_EQ(matchLines(a, b).size(), 64U);
}

FilePointer fileOf(const std::string& text) {
  FilePointer file(std::tmpfile());
  std::fwrite(text.data(), 1, text.size(), file.get());
  std::fflush(file.get());
  return file;
}

std::string diffOf(const std::string& a, const std::string& b) {
  const FilePointer left = fileOf(a), right = fileOf(b);
  std::string diff;
  printDiff(::fileno(left.get()), ::fileno(right.get()), "a", "b",
            [&](std::string_view line) { diff.append(line) += '\n'; });
  return diff;
}

TEST(PrintDiffTest, Hunks) {
  EXPECT_EQ(diffOf("1\n2\n", "1\n2\n"), "");
  EXPECT_EQ(diffOf("", "x\n"), "--- a\n+++ b\n@@ -0,0 +1 @@\n+x\n");
  EXPECT_EQ(diffOf("x\n", ""), "--- a\n+++ b\n@@ -1 +0,0 @@\n-x\n");
  EXPECT_EQ(diffOf("1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n", "1\nx\n3\n4\n5\n6\n7\n8\n9\ny\n11\n"),
            "--- a\n+++ b\n@@ -1,5 +1,5 @@\n 1\n-2\n+x\n 3\n 4\n 5\n"
            "@@ -7,5 +7,5 @@\n 7\n 8\n 9\n-10\n+y\n 11\n");
  EXPECT_EQ(diffOf("1\n2", "1\n2\n"),
            "--- a\n+++ b\n@@ -1,2 +1,2 @@\n 1\n-2\n\\ No newline at end of file\n+2\n");
}

}  // namespace

}  // namespace vsa_tools
