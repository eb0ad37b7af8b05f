// Tests of mayHaveLongRun(): long numbers are found wherever they are in a list.
#include "tools/vsa/check/text/digit_runs.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vsa_tools::mayHaveLongRun;
using vsa_tools::Points;

// A list of 200 bytes with the number at `at`.
std::string listWith(const std::string& number, std::size_t at) {
  constexpr std::size_t LIST_BYTES = 200;
  std::string list(LIST_BYTES, ' ');
  list.front() = '{';
  list.back() = '}';
  return list.replace(at, number.size(), number);
}

TEST(DigitRunsTest, FindsALongNumberAtEachPlace) {
  for (std::size_t at = 1; at < 180; ++at) {
    EXPECT_TRUE((mayHaveLongRun<9, Points::Allowed>(listWith("1234567890", at)))) << at;
    EXPECT_TRUE((mayHaveLongRun<9, Points::Allowed>(listWith("1.234567890", at)))) << at;
    EXPECT_TRUE((mayHaveLongRun<15, Points::None>(listWith("1234567890123456", at)))) << at;
  }
}

#if defined(__SSE2__)
TEST(DigitRunsTest, SkipsListsOfShortNumbers) {
  for (std::size_t at = 1; at < 180; ++at) {
    EXPECT_FALSE((mayHaveLongRun<9, Points::Allowed>(listWith("123456789", at)))) << at;
    EXPECT_FALSE((mayHaveLongRun<9, Points::Allowed>(listWith("1.23456789", at)))) << at;
    EXPECT_FALSE((mayHaveLongRun<15, Points::None>(listWith("123456789012345", at)))) << at;
  }
}

TEST(DigitRunsTest, SkipsFractionsIfPointsDoNotCount) {
  EXPECT_FALSE((mayHaveLongRun<15, Points::None>("(0.6000000238418579 0.4 0.25 1)")));
  EXPECT_FALSE((mayHaveLongRun<15, Points::None>(listWith("0.12345678901234567", 20))));
}
#endif

TEST(DigitRunsTest, FindsALongIntegerInAShortList) {
  for (std::size_t at = 1; at < 40; ++at) {
    const std::string list = listWith("1234567890123456", at).substr(0, at + 17);
    EXPECT_TRUE((mayHaveLongRun<15, Points::None>(list))) << at;
  }
  EXPECT_TRUE((mayHaveLongRun<15, Points::None>("(0.6000000238418579 1234567890123456)")));
}

TEST(DigitRunsTest, AShortListMayHaveLongNumbers) {
  EXPECT_TRUE((mayHaveLongRun<9, Points::Allowed>("{1234567890}")));
}

}  // namespace
