#include "tools/scene_text/printable_text.h"

#include <gtest/gtest.h>
#include <utf8.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vsa_tools {

namespace {

/// Returns the length in bytes of each character of `text`, and 0 for an invalid byte.
std::vector<size_t> characterLengths(std::string_view text) {
  std::vector<size_t> lengths;
  forEachCharacter(
      text, [&](char32_t, std::string_view bytes) { lengths.push_back(bytes.size()); },
      [&](char) { lengths.push_back(0); });
  return lengths;
}

struct LengthsRow {
  std::string_view text;
  std::vector<size_t> lengths;
};

TEST(ForEachCharacterTest, AcceptsOnlyWellFormedSequences) {
  const LengthsRow rows[] = {
      {"", {}},
      {"a", {1}},
      {"\x7F", {1}},
      {"\xC2\x80", {2}},
      {"\xDF\xBF.", {2, 1}},
      {"\xE0\xA0\x80", {3}},
      {"\xEF\xBF\xBF", {3}},
      {"\xF0\x90\x80\x80", {4}},
      {"\xF4\x8F\xBF\xBF", {4}},
      {"\x80", {0}},
      {"\xC0\x80", {0, 0}},
      {"\xC1\xBF", {0, 0}},
      {"\xC3", {0}},
      {"\xC3(", {0, 1}},
      {"\xE0\x9F\xBF", {0, 0, 0}},
      {"\xE2\x82", {0, 0}},
      {"\xE2\x82(", {0, 0, 1}},
      {"\xE2\x82\xC3\xA6", {0, 0, 2}},
      {"\xED\xA0\x80", {0, 0, 0}},
      {"\xF0\x8F\xBF\xBF", {0, 0, 0, 0}},
      {"\xF0\x90\x80", {0, 0, 0}},
      {"\xF4\x90\x80\x80", {0, 0, 0, 0}},
      {"\xF5\x80\x80\x80", {0, 0, 0, 0}},
      {"\xFF", {0}},
  };
  for (const LengthsRow& row : rows) {
    EXPECT_EQ(row.lengths, characterLengths(row.text)) << printable(row.text);
  }
}

TEST(ForEachCharacterTest, DecodesCodePoints) {
  std::u32string decoded;
  forEachCharacter(
      "a\xC3\xA6\xE2\x82\xAC\xF0\x9F\x98\x80",
      [&](char32_t character, std::string_view) { decoded += character; },
      [&](char byte) { ADD_FAILURE() << escapedByte(byte); });
  EXPECT_EQ(U"a\u00E6\u20AC\U0001F600", decoded);
}

struct PrintableRow {
  std::string_view text, printed;
};

TEST(PrintableTest, EscapesControlsInJson) {
  EXPECT_EQ(
      "{\n \"a\": \"\\u001b\\u007f\\u009b\\u202e\\udb40\\udc01\xC3\xA6\"}\n",
      printableJson("{\n \"a\": \"\\u001b\x7F\xC2\x9B\xE2\x80\xAE\xF3\xA0\x80\x81\xC3\xA6\"}\n"));
}

TEST(PrintableTest, EscapesControlsAndInvalidBytes) {
  const PrintableRow rows[] = {
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
  for (const PrintableRow& row : rows) EXPECT_EQ(row.printed, printable(row.text));
}

TEST(PrintableTest, EscapesWhatIsNotShown) {
  const PrintableRow rows[] = {
      {"a\u00ADb", "a\\u00adb"}, {"a\u200Bb", "a\\u200bb"},
      {"a\u200Cb", "a\\u200cb"}, {"a\u200Db", "a\\u200db"},
      {"a\u2060b", "a\\u2060b"}, {"a\uFEFFb", "a\\ufeffb"},
      {"a\u2066b", "a\\u2066b"}, {"a\u2068b", "a\\u2068b"},
      {"a\u2069b", "a\\u2069b"}, {"\U000E0041", "\\udb40\\udc41"},
      {"\u200A", "\u200A"},      {"\u2010", "\u2010"},
      {"\u2065", "\u2065"},      {"\U000E0080", "\U000E0080"},
  };
  for (const PrintableRow& row : rows) EXPECT_EQ(row.printed, printable(row.text));
}

// The ranges contain the characters that a terminal does not show, or that change the order of
// other characters. The characters directly before and after each range are shown.
TEST(PrintableTest, EscapesEachCharacterThatIsNotShown) {
  constexpr char32_t RANGES[][2] = {
      {0x7F, 0x9F},       {0xAD, 0xAD},       {0x34F, 0x34F},   {0x61C, 0x61C},   {0x115F, 0x1160},
      {0x17B4, 0x17B5},   {0x180E, 0x180E},   {0x3164, 0x3164}, {0xFFA0, 0xFFA0}, {0xFFF9, 0xFFFB},
      {0x1D173, 0x1D17A}, {0x200B, 0x200F},   {0x2028, 0x202E}, {0x2060, 0x2064}, {0x2066, 0x206F},
      {0xFEFF, 0xFEFF},   {0xE0000, 0xE007F},
  };
  for (const auto& [first, last] : RANGES) {
    for (char32_t c = first - 1; c <= last + 1; ++c) {
      std::string character;
      utf8::append(c, character);
      const bool isShown = c < first || c > last;
      EXPECT_EQ(isShown, printable(character) == character) << std::hex << std::uint32_t{c};
    }
  }
}

TEST(PrintableTest, ALineTellsEscapesFromBackslashesAndHoldsNoCommand) {
  const PrintableRow rows[] = {
      {"", ""},
      {"a.vsa", "a.vsa"},
      {"\n\\n", "\\n\\\\n"},
      {"a\\b.vsa", "a\\\\b.vsa"},
      {"a\\b\\c", "a\\\\b\\\\c"},
      {"::error::x", "\\x3a:error::x"},
      {"  ::error", "  \\x3a:error"},
      {"a::b", "a::b"},
      {"##[error]x", "\\x23#[error]x"},
      {"a ##vso[task]", "a \\x23#vso[task]"},
      {"## a", "## a"},
      {"###[x", "#\\x23#[x"},
  };
  for (const PrintableRow& row : rows) EXPECT_EQ(row.printed, printableLine(row.text));
}

}  // namespace

}  // namespace vsa_tools
