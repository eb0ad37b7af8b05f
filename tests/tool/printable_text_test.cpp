#include "tools/scene_text/printable_text.h"

#include <gtest/gtest.h>

namespace vsa_tools {

namespace {

struct LengthRow {
  std::string_view text;
  size_t length;
};

TEST(Utf8SequenceLengthTest, MeasuresWellFormedSequencesOnly) {
  const LengthRow rows[] = {
      {"a", 1},
      {"\x7F", 1},
      {"\xC2\x80", 2},
      {"\xDF\xBF...", 2},
      {"\xE0\xA0\x80", 3},
      {"\xEF\xBF\xBF", 3},
      {"\xF0\x90\x80\x80", 4},
      {"\xF4\x8F\xBF\xBF", 4},
      {"\x80", 0},
      {"\xC0\x80", 0},
      {"\xC1\xBF", 0},
      {"\xC3", 0},
      {"\xC3(", 0},
      {"\xE0\x9F\xBF", 0},
      {"\xE2\x82", 0},
      {"\xE2\x82(", 0},
      {"\xED\xA0\x80", 0},
      {"\xF0\x8F\xBF\xBF", 0},
      {"\xF0\x90\x80", 0},
      {"\xF4\x90\x80\x80", 0},
      {"\xF5\x80\x80\x80", 0},
      {"\xFF", 0},
  };
  for (const LengthRow& row : rows)
    EXPECT_EQ(row.length, utf8SequenceLength(row.text)) << visible(row.text);
}

TEST(Utf8CharacterTest, JoinsTheBits) {
  EXPECT_EQ(U'a', utf8Character("a"));
  EXPECT_EQ(U'\u00E6', utf8Character("\xC3\xA6"));
  EXPECT_EQ(U'\u20AC', utf8Character("\xE2\x82\xAC"));
  EXPECT_EQ(U'\U0001F600', utf8Character("\xF0\x9F\x98\x80"));
}

struct VisibleRow {
  std::string_view text, shown;
};

TEST(VisibleTest, LeavesNothingThatActs) {
  const VisibleRow rows[] = {
      {"", ""},
      {"plain \\ \"text\"", "plain \\ \"text\""},
      {"\xD0\xBA\xD1\x83\xD0\xB1", "\xD0\xBA\xD1\x83\xD0\xB1"},
      {"\x1B[2J", "\\x1b[2J"},
      {"a\nb\rc\td", "a\\nb\\rc\\td"},
      {std::string_view("\0\x7F", 2), "\\x00\\x7f"},
      {"\xC2\x9B!", "\\u009b!"},
      {"\x9B!", "\\x9b!"},
      {"\xE2\x80\xAE.", "\\u202e."},
      {"\xE2\x80\xA8", "\\u2028"},
      {"\xE2\x82", "\\xe2\\x82"},
      {"\xE6rger", "\\xe6rger"},
  };
  for (const VisibleRow& row : rows) EXPECT_EQ(row.shown, visible(row.text));
}

}  // namespace

}  // namespace vsa_tools
