// Tests every byte in every class against sets that are listed here.
#include <vsa/foundation/char_class.h>

#include <gtest/gtest.h>

#include <string_view>

#include <vsa/foundation/string.h>
#include "tests/support/host_locale.h"

namespace zn {
namespace {

constexpr std::string_view DIGITS = "0123456789";
constexpr std::string_view HEX = "0123456789ABCDEFabcdef";
constexpr std::string_view ASCII_LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view SPACES = " \t\n\v\f\r";
constexpr std::string_view NUMBER_CHARS = "+-.AEFINUaefinu0123456789ABCDEFabcdef";

constexpr bool isOneOf(char c, std::string_view set) {
  return set.find(c) != std::string_view::npos;
}

/// Returns the classes of a byte by their definitions.
constexpr unsigned definedClasses(unsigned byte) {
  const char c = static_cast<char>(byte);
  const bool high = byte >= 0x80 && byte <= 0xFE;
  const bool letter = high || isOneOf(c, ASCII_LETTERS);
  const bool printable = high || (byte >= 0x20 && byte <= 0x7E);
  const bool name = letter || isOneOf(c, DIGITS) || c == '_';
  const bool white = byte != 0xFF && (isOneOf(c, SPACES) || !printable);
  unsigned classes = 0;
  if (isOneOf(c, DIGITS)) classes |= char_class::DIGIT;
  if (isOneOf(c, HEX)) classes |= char_class::HEX_DIGIT;
  if (letter) classes |= char_class::LETTER;
  if (isOneOf(c, SPACES)) classes |= char_class::SPACE;
  if (printable) classes |= char_class::PRINTABLE;
  if (isOneOf(c, NUMBER_CHARS)) classes |= char_class::NUMBER;
  if (name) classes |= char_class::NAME;
  if (white) classes |= char_class::WHITE;
  return classes;
}

constexpr bool tableIsAsDefined() {
  for (unsigned byte = 0; byte < 256; ++byte) {
    if (char_class::TABLE[byte] != definedClasses(byte)) return false;
  }
  return true;
}

static_assert(tableIsAsDefined());

void expectClassesOfEveryByte() {
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    const bool high = byte >= 0x80 && byte <= 0xFE;
    const bool printable = (byte >= 0x20 && byte <= 0x7E) || high;
    SCOPED_TRACE(byte);
    EXPECT_EQ(String::isDigit(c), isOneOf(c, DIGITS));
    EXPECT_EQ(String::isHexDigit(c), isOneOf(c, HEX));
    EXPECT_EQ(String::isLetter(c), high || isOneOf(c, ASCII_LETTERS));
    EXPECT_EQ(String::isSpace(c), isOneOf(c, SPACES));
    EXPECT_EQ(String::isPrintable(c), printable);
    EXPECT_EQ(char_class::is(c, char_class::NUMBER), isOneOf(c, NUMBER_CHARS));
    EXPECT_EQ(char_class::is(c, char_class::NAME),
              high || isOneOf(c, ASCII_LETTERS) || isOneOf(c, DIGITS) || c == '_');
    EXPECT_EQ(char_class::is(c, char_class::WHITE),
              byte != 0xFF && (isOneOf(c, SPACES) || !printable));
  }
}

TEST(CharClass, EveryByte) {
  expectClassesOfEveryByte();
}

TEST(CharClass, TheEndMarkIsInNoClass) {
  EXPECT_FALSE(char_class::is('\xFF', 0xFF));
}

TEST(CharClass, NoLocaleChangesThem) {
  for (const char* const name : vsa_tests::cLocales()) {
    const vsa_tests::HostLocale locale(name);
    expectClassesOfEveryByte();
  }
}

}  // namespace
}  // namespace zn
