// Tests of the comparison of two texts token by token, with lists that the reader returns in
// several pieces.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/syntax/syntax_source.h"
#include "tools/vsa/fmt/comparison/same_numbers.h"
#include "tools/vsa/fmt/comparison/same_tokens.h"
#include "tools/vsa/fmt/layout/plain_numbers.h"

namespace vsa_tools {

namespace {

bool hasTokensOf(std::string_view a, std::string_view b) {
  vsa_tests::StepSource left(a, 70000), right(b, 110000);
  vsa::SyntaxReader x(left), y(right);
  const bool isSame = haveSameTokens(x, y);
  vsa::SyntaxReader wholeX(a), wholeY(b);
  EXPECT_EQ(isSame, haveSameTokens(wholeX, wholeY));
  return isSame;
}

/// Returns a buffer literal with the numbers. Each separator is chosen at random.
std::string literalOf(const std::vector<std::string>& numbers, std::mt19937& random) {
  constexpr std::string_view SEPARATORS[] = {" ",  " ", " ",  "\n", "\n    ",
                                             ", ", ",", "\t", "(",  ") "};
  std::string text = "t n;\nn.f = float[3] {";
  for (const std::string& number : numbers) {
    text += number;
    text += SEPARATORS[random() % std::size(SEPARATORS)];
  }
  return text + "7};\n";  // a separator before the bracket could be an empty element
}

std::vector<std::string> randomNumbers(std::size_t count, std::mt19937& random) {
  std::vector<std::string> numbers(count);
  for (std::string& number : numbers) {
    number = std::to_string(static_cast<int>(random() % 4000) - 2000);
    if (random() % 3 == 0) number += "." + std::to_string(random() % 1000000);
    if (random() % 50 == 0) number += "e-05";
  }
  return numbers;
}

TEST(SameTokensTest, IgnoresTheSeparatorsOfLists) {
  std::mt19937 random(5);
  for (const std::size_t count : {0, 1, 5, 40, 1000, 200000}) {
    const std::vector<std::string> numbers = randomNumbers(count, random);
    EXPECT_TRUE(hasTokensOf(literalOf(numbers, random), literalOf(numbers, random))) << count;
  }
}

TEST(SameTokensTest, FindsOneOtherNumber) {
  std::mt19937 random(6);
  std::vector<std::string> numbers = randomNumbers(120000, random);
  const std::string before = literalOf(numbers, random);
  for (const std::size_t at :
       {std::size_t{0}, std::size_t{1}, std::size_t{60000}, std::size_t{119998}}) {
    const std::string kept = numbers[at];
    for (const std::string& other : {kept + "0", "1" + kept, std::string("77777"), kept + " 1"}) {
      numbers[at] = other;
      EXPECT_FALSE(hasTokensOf(before, literalOf(numbers, random))) << at << ' ' << other;
    }
    numbers[at] = kept;
  }
  numbers.erase(numbers.begin() + 5000);
  EXPECT_FALSE(hasTokensOf(before, literalOf(numbers, random)));
}

TEST(SameTokensTest, FindsOtherTokens) {
  const std::string text = "t n; n.a = 1; # c\nn.b = vec3(1 2 3);";
  EXPECT_TRUE(hasTokensOf(text, "t  n;n.a=1;# c\n  n.b  =vec3( 1,2,3 );"));
  for (const char* other :
       {"t n; n.a = 1; # c\nn.b = vec3(1 2 3)", "t n; n.a = 1; # d\nn.b = vec3(1 2 3);",
        "t n; n.a = 1; # c\nn.b = vec3{1 2 3};", "t n; n.a = 1.; # c\nn.b = vec3(1 2 3);",
        "t n; n.a = 1; # c\nn.b = vec3(1 23);", "", "t n; n.a = 1; # c\nn.b = vec3(1 2 3 , );"}) {
    EXPECT_FALSE(hasTokensOf(text, other)) << other;
    EXPECT_FALSE(hasTokensOf(other, text)) << other;
  }
}

TEST(SameTokensTest, IsNotSameBeforeTheEnd) {
  vsa::SyntaxReader expected("t n;"), reader("t n;");
  TokenComparison comparison(expected);
  for (int i = 0; i < 3; ++i) {
    comparison.add(reader.next());
    EXPECT_FALSE(comparison.hasDifference());
    EXPECT_FALSE(comparison.isSame());
  }
  for (int i = 0; i < 2; ++i) {
    comparison.add(reader.next());  // EndOfText
    EXPECT_TRUE(comparison.isSame());
    EXPECT_FALSE(comparison.hasDifference());
  }
}

// The longer string begins with the bytes that represent the shorter one and the end of the text.
TEST(SameTokensTest, FindsAStringThatContinues) {
  const std::string cut = "n.s = \"a";
  std::string longer = cut;
  for (const vsa::SyntaxKind kind : {vsa::SyntaxKind::Unterminated, vsa::SyntaxKind::EndOfText}) {
    (longer += '\0') += static_cast<char>(kind);
  }
  EXPECT_FALSE(hasTokensOf(longer, cut));
  EXPECT_FALSE(hasTokensOf(cut, longer));
}

// The expected result is that of comparing the numbers one by one.
TEST(SameTokensTest, TakesTheCommonNumbers) {
  constexpr std::string_view PARTS[] = {"1", "12", "1.5", "-1", " ", " ", "\n", " , "};
  std::mt19937 random(7);
  const auto randomText = [&] {
    std::string text = "1";
    for (auto parts = random() % 12; parts > 0; --parts) text += PARTS[random() % std::size(PARTS)];
    return text + ' ';
  };
  for (int i = 0; i < 20000; ++i) {
    const std::string a = randomText(), b = randomText();
    std::string_view x = a, y = b, restX = a, restY = b;
    bool isSame = true;
    while (isSame && !restX.empty() && !restY.empty()) {
      isSame = takeNumber(restX) == takeNumber(restY);
    }
    ASSERT_EQ(takeSameNumbers(x, y), isSame) << a << '|' << b;
    if (isSame) {
      EXPECT_EQ(x, restX) << a << '|' << b;
      EXPECT_EQ(y, restY) << a << '|' << b;
    }
  }
}

}  // namespace

}  // namespace vsa_tools
