// Tests of functions that convert columns in bytes to columns in characters or UTF-16 code units.
#include <gtest/gtest.h>

#include <string>

#include <vsa/reading/text_position.h>

namespace vsa_tests {

namespace {

TEST(TextColumn, OfAsciiIsTheSame) {
  const std::string line = "lamp sun;";
  for (std::uint64_t column = 1; column <= line.size() + 3; ++column) {
    EXPECT_EQ(vsa::columnInCharacters(line, column), column);
    EXPECT_EQ(vsa::columnInUtf16(line, column), column);
  }
}

TEST(TextColumn, CountsCharactersOfSeveralBytesOnce) {
  // The line has characters of 2, 3 and 4 bytes, and then "x".
  const std::string line = "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80x";
  const std::uint64_t characters[] = {1, 1, 2, 2, 2, 3, 3, 3, 3, 4, 5};
  const std::uint64_t units[] = {1, 1, 2, 2, 2, 3, 3, 3, 3, 5, 6};
  for (std::uint64_t column = 1; column <= 11; ++column) {
    EXPECT_EQ(vsa::columnInCharacters(line, column), characters[column - 1]) << column;
    EXPECT_EQ(vsa::columnInUtf16(line, column), units[column - 1]) << column;
  }
}

// Each text is the first or the last valid character among those with the same first byte. The byte
// sequences directly beyond it are invalid: an overlong form, a surrogate, or a character beyond
// U+10FFFF.
TEST(TextColumn, CountsTheFirstAndTheLastCharacterOfAForm) {
  for (const std::string line :
       {"\xE0\xA0\x80", "\xED\x9F\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
    const std::uint64_t end = line.size() + 1;
    EXPECT_EQ(vsa::columnInCharacters(line, end), 2U);
    EXPECT_EQ(vsa::columnInUtf16(line, end), line.size() == 4 ? 3U : 2U);
  }
}

TEST(TextColumn, CountsInvalidBytesOneByOne) {
  // Each byte of these texts counts as one character. The texts have continuation bytes without a
  // first byte, truncated and overlong forms, a surrogate, and characters beyond U+10FFFF.
  for (const std::string line :
       {"\x80\x80", "\xE2\x82", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE0\x80\x80",
        "\xE1\x80", "\xF1\x80\x80", "\xF0\x80\x80\x80", "\xF5\x80", "\xC3x"}) {
    for (std::uint64_t column = 1; column <= line.size() + 1; ++column) {
      EXPECT_EQ(vsa::columnInCharacters(line, column), column);
      EXPECT_EQ(vsa::columnInUtf16(line, column), column);
    }
  }
}

TEST(TextColumn, OfZeroIsTheFirst) {
  EXPECT_EQ(vsa::columnInCharacters("abc", 0), 1U);
  EXPECT_EQ(vsa::columnInUtf16("", 0), 1U);
  EXPECT_EQ(vsa::columnInUtf16("", 7), 7U);
}

}  // namespace

}  // namespace vsa_tests
