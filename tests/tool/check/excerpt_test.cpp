// Tests of excerpts: source lines with carets.
#include "tools/vsa/check/output/excerpt.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/tool/command_fixture.h"

namespace vsa_tests {

namespace {

using vsa_tools::CheckedText;
using vsa_tools::Excerpt;
using vsa_tools::excerptOf;

class ExcerptTest : public CommandFixture {
 protected:
  /// Returns the excerpt for the bytes from `begin` (inclusive) to `end` (exclusive) of a text of
  /// one line.
  Excerpt excerpt(const std::string& line, std::size_t begin, std::size_t end,
                  std::size_t width = 40) {
    write("a.vsa", line);
    const CheckedText text((folder_ / "a.vsa").string());
    return excerptOf(text, {{begin, 1, begin + 1}, {end, 1, end + 1}}, width);
  }
};

struct Row {
  std::string line;
  std::size_t begin, end;
  std::string shown, carets;
};

TEST_F(ExcerptTest, CaretsAreUnderTheBytes) {
  const Row rows[] = {
      {"a.x = 1;\n", 6, 7, "a.x = 1;", "      ^"},
      {"a.x = 1;\r\n", 0, 3, "a.x = 1;", "^^^"},
      {"abc", 3, 3, "abc", "   ^"},  // after the end of the line
      {"abc", 1, 1, "abc", " ^"},    // an empty range
      {"", 0, 0, "", "^"},           // an empty file
      {"\ta.x", 1, 2, "        a.x", "        ^"},
      {"ab\tc", 3, 4, "ab      c", "        ^"},
      {"\xC3\xA4 = 1", 5, 6, "\xC3\xA4 = 1", "    ^"},           // two bytes, one column
      {"\xE4\xB8\x80 = 1", 6, 7, "\xE4\xB8\x80 = 1", "     ^"},  // three bytes, two columns
      {"\xE4\xB8\x80 = 1", 0, 3, "\xE4\xB8\x80 = 1", "^^"},      // a wide character
      {"e\xCC\x81 = 1", 6, 7, "e\xCC\x81 = 1", "    ^"},         // a combining mark
      {"a\x1B[2Jb", 5, 6, "a\\x1b[2Jb", "        ^"},            // a control character
      {"\xFF b", 2, 3, "\\xff b", "     ^"},                     // a byte that is not UTF-8
      {"\xE2\x80\xAE"
       "b",
       3, 4, "\\u202eb", "      ^"},  // a direction mark
  };
  for (const Row& row : rows) {
    const Excerpt found = excerpt(row.line, row.begin, row.end);
    EXPECT_EQ(row.shown, found.line);
    EXPECT_EQ(row.carets, found.carets) << row.shown;
  }
}

TEST_F(ExcerptTest, LongLinesAreCutAroundTheSourceRange) {
  const std::string line = std::string(100, 'a') + "MISTAKE" + std::string(100, 'b');
  const Excerpt middle = excerpt(line, 100, 107);
  EXPECT_EQ("...aaaaaaaaaaaaaaMISTAKEbbbbbbbbbbbbb...", middle.line);
  EXPECT_EQ("                 ^^^^^^^", middle.carets);
  const Excerpt begin = excerpt(line, 0, 1, 20);
  EXPECT_EQ("aaaaaaaaaaaaaa...", begin.line);
  EXPECT_EQ("^", begin.carets);
  const Excerpt end = excerpt(line, 207, 207, 20);
  EXPECT_EQ("...bbbbbbbbbbbbbb", end.line);
  EXPECT_EQ(std::string(17, ' ') + "^", end.carets);
  const Excerpt wide = excerpt(line, 10, 200, 20);  // the range is wider than the excerpt
  EXPECT_EQ(20u, wide.line.size());
  EXPECT_EQ("   ^^^^^^^^^^^^^^", wide.carets);
}

TEST_F(ExcerptTest, AVeryLongLineIsReadInPart) {
  std::string line;
  for (int i = 0; i < 100000; ++i) line += "\xE4\xB8\x80";
  const Excerpt found = excerpt(line, 150000, 150003);
  EXPECT_TRUE(found.line.starts_with("...\xE4\xB8\x80")) << found.line;
  EXPECT_TRUE(found.line.ends_with("\xE4\xB8\x80...")) << found.line;
  EXPECT_EQ(std::string::npos, found.line.find('\\')) << found.line;
}

TEST_F(ExcerptTest, ARangeOfSeveralLinesIsMarkedInItsFirst) {
  write("a.vsa", "ab(c\nd) e\n");
  const CheckedText text((folder_ / "a.vsa").string());
  const Excerpt found = excerptOf(text, {{2, 1, 3}, {7, 2, 3}}, 40);
  EXPECT_EQ("ab(c", found.line);
  EXPECT_EQ("  ^^", found.carets);
}

}  // namespace

}  // namespace vsa_tests
