// Tests of the functions that find the numbers in a piece of a list. They compute a mask that has
// one bit for each character. The expected results come from a loop that tests each character.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tools/vsa/fmt/layout/plain_numbers.h"

namespace vsa_tools {

namespace {

std::vector<std::string> numbersOneByOne(std::string_view text) {
  std::vector<std::string> numbers;
  bool isInside = false;
  for (const char c : text) {
    const bool isNumber = isInNumber(c);
    if (isNumber && !isInside) numbers.emplace_back();
    if (isNumber) numbers.back() += c;
    isInside = isNumber;
  }
  return numbers;
}

std::vector<std::string> numbersOf(std::string_view text) {
  std::vector<std::string> numbers;
  forEachNumber(text, [&](std::string_view number) { numbers.emplace_back(number); });
  return numbers;
}

TEST(PlainNumbersTest, MaskHasABitForEachCharacterOfANumber) {
  for (int first = 0; first < 256; first += 64) {
    std::string text;
    for (int i = 0; i < 64; ++i) text += static_cast<char>(first + i);
    const std::uint64_t mask = numberMask(text.data());
    for (int i = 0; i < 64; ++i) {
      EXPECT_EQ((mask >> i & 1) != 0, isInNumber(text[static_cast<std::size_t>(i)])) << first + i;
    }
  }
}

TEST(PlainNumbersTest, FindsTheNumbersOfRandomLists) {
  constexpr char BYTES[] = "0123456789.-+eEinu    \n,,([\t";
  std::mt19937 random(8);
  for (int i = 0; i < 2000; ++i) {
    std::string text = "1";
    for (auto length = random() % 400; length > 0; --length) {
      text += BYTES[random() % (sizeof BYTES - 1)];
    }
    EXPECT_EQ(numbersOf(text), numbersOneByOne(text)) << text;
    const NumberBlock block = firstNumbers(text);
    EXPECT_EQ(block.text, text);
    EXPECT_EQ(block.count, numbersOneByOne(text).size()) << text;
  }
}

TEST(PlainNumbersTest, BlocksEndBeforeANumber) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += std::to_string(i) + (i % 7 == 0 ? " , " : " ");
  std::string_view rest = text;
  std::size_t count = 0;
  while (!rest.empty()) {
    const NumberBlock block = firstNumbers(rest);
    count += block.count;
    rest.remove_prefix(block.text.size());
    EXPECT_TRUE(rest.empty() || (isInNumber(rest[0]) && !isInNumber(block.text.back())));
  }
  EXPECT_EQ(count, 5000U);
}

TEST(PlainNumbersTest, LeavesOutTheNumbersAtBothEnds) {
  std::string list = "{1 2";
  for (int i = 0; i < 30; ++i) list += " 3.5";
  EXPECT_TRUE(plainNumbers(list + " 4}", '{', '}').starts_with("2 3.5 "));
  EXPECT_TRUE(plainNumbers(list + " 4}", '{', '}').ends_with("3.5 "));
  EXPECT_TRUE(plainNumbers(list + "77", '{', '}').ends_with("3.5 "));
}

TEST(PlainNumbersTest, RefusesBracketsOfTheListsKind) {
  std::string list = "{1 {2 }3";
  for (int i = 0; i < 30; ++i) list += " 3.5";
  EXPECT_EQ(plainNumbers(list + "}", '{', '}'), "");
  EXPECT_NE(plainNumbers(list + ")", '(', ')'), "");
  EXPECT_EQ(plainNumbers("{1 2 3}", '{', '}'), "");
}

}  // namespace

}  // namespace vsa_tools
