// Tests of words that are almost "inf" or "nan", and of numbers in which a late digit decides how
// they are rounded.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "foundation/numbers/number_text.h"

namespace zn {
namespace {

template <class Real>
bool reads(const std::string& text, Real& out) {
  return realFromText(text.data(), text.data() + text.size(), out);
}

TEST(NumberTextWords, OneLetterOff) {
  double number = 1;
  for (const char* const word : {"xnf", "ixf", "inx", "xan", "nxn", "nax", "in", "na", "infi",
                                 "nann", "-", "+", "i", "n", "+-inf", "inf ", "NAN", "iNf"}) {
    const std::string text = word;
    const bool isWord = text == "inf " || text == "NAN" || text == "iNf";
    EXPECT_EQ(reads(text, number), isWord) << text;
  }
}

TEST(NumberTextWords, APointAfterTheSignificantDigits) {
  // 2^53 + 1 is half-way between two doubles. A digit after a thousand zeros must still round it
  // up.
  const std::string tie = "9007199254740993";
  const std::string zeros(1000, '0');
  double number = 0;
  ASSERT_TRUE(reads(tie + "." + zeros, number));
  EXPECT_EQ(number, 9007199254740992.0);
  ASSERT_TRUE(reads(tie + "." + zeros + "1", number));
  EXPECT_EQ(number, 9007199254740994.0);
  ASSERT_TRUE(reads(tie + zeros + ".0e-1000", number));
  EXPECT_EQ(number, 9007199254740992.0);
  ASSERT_TRUE(reads(tie + zeros + ".1e-1000", number));
  EXPECT_EQ(number, 9007199254740994.0);
  ASSERT_TRUE(reads(tie + zeros + "." + zeros + "1e-1000", number));
  EXPECT_EQ(number, 9007199254740994.0);
}

}  // namespace
}  // namespace zn
