// Tests that line feeds are counted and found in texts of many lengths. The function counts in runs
// of 240 bytes.
#include "vsa/lex/byte_scan.h"

#include <gtest/gtest.h>

#include <string>

namespace zn::korvo_sdk::impl {
namespace {

LineFeeds feedsIn(const std::string& text) {
  return countLineFeeds(text.data(), text.data() + text.size());
}

TEST(ByteScan, CountsAndFindsLineFeedsInTextsOfManyLengths) {
  for (std::size_t length = 0; length < 600; length += length < 70 ? 1 : 53) {
    const std::string blank(length, ' ');
    EXPECT_EQ(feedsIn(blank).count, 0U);
    EXPECT_EQ(feedsIn(blank).last, nullptr);
    const std::string feeds(length, '\n');
    EXPECT_EQ(feedsIn(feeds).count, length);
    for (std::size_t at = 0; at < length; ++at) {
      std::string text = blank;
      text[at] = '\n';
      EXPECT_EQ(feedsIn(text).count, 1U);
      EXPECT_EQ(feedsIn(text).last, text.data() + at);
      text[0] = '\n';
      EXPECT_EQ(feedsIn(text).count, at == 0 ? 1U : 2U);
      EXPECT_EQ(feedsIn(text).last, text.data() + at);
    }
  }
}

TEST(ByteScan, BytesAbove0x7FAreNoLineFeeds) {
  EXPECT_EQ(feedsIn(std::string(40, '\xFF')).count, 0U);
  EXPECT_EQ(feedsIn(std::string(40, static_cast<char>('\n' | 0x80))).count, 0U);
}

TEST(ByteScan, CountsLineFeeds) {
  const std::string text = "a\nbb\nccc";
  EXPECT_EQ(feedsIn(text).count, 2U);
  EXPECT_EQ(feedsIn(text).last, text.data() + 4);
  EXPECT_EQ(countLineFeeds(text.data(), text.data() + 1).last, nullptr);
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
