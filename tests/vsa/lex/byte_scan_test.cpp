// Tests that bytes are counted and found in texts of every length. The functions process sixteen
// bytes at a time, and then the remaining bytes.
#include "vsa/lex/byte_scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace zn::korvo_sdk::impl {
namespace {

std::size_t countIn(const std::string& text, char c) {
  return countOf(text.data(), text.data() + text.size(), c);
}

/// Returns the index of the last `c`, or -1 if there is none.
long lastIn(const std::string& text, char c) {
  const char* const found = findLast(text.data(), text.data() + text.size(), c);
  return found == nullptr ? -1 : found - text.data();
}

TEST(ByteScan, CountsAndFindsInEveryLength) {
  for (std::size_t length = 0; length < 70; ++length) {
    const std::string blank(length, ' ');
    EXPECT_EQ(countIn(blank, '\n'), 0U);
    EXPECT_EQ(lastIn(blank, '\n'), -1);
    EXPECT_EQ(countIn(blank, ' '), length);
    EXPECT_EQ(lastIn(blank, ' '), static_cast<long>(length) - 1);
    for (std::size_t at = 0; at < length; ++at) {
      std::string text = blank;
      text[at] = '\n';
      EXPECT_EQ(countIn(text, '\n'), 1U);
      EXPECT_EQ(lastIn(text, '\n'), static_cast<long>(at));
      text[0] = '\n';
      EXPECT_EQ(countIn(text, '\n'), at == 0 ? 1U : 2U);
      EXPECT_EQ(lastIn(text, '\n'), static_cast<long>(at));
    }
  }
}

TEST(ByteScan, BytesAbove0x7F) {
  const std::string text(40, '\xFF');
  EXPECT_EQ(countIn(text, '\xFF'), 40U);
  EXPECT_EQ(countIn(text, '\x7F'), 0U);
  EXPECT_EQ(lastIn(text, '\x7F'), -1);
}

TEST(ByteScan, CountsLineFeeds) {
  const std::string text = "a\nbb\nccc";
  const LineFeeds found = countLineFeeds(text.data(), text.data() + text.size());
  EXPECT_EQ(found.count, 2U);
  EXPECT_EQ(found.last, text.data() + 4);
  EXPECT_EQ(countLineFeeds(text.data(), text.data() + 1).last, nullptr);
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
