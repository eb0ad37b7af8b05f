// The index of a lexer has 32 bits. SourceProgress knows the offset in sources of any size.
#include "vsa/lex/source_progress.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace zn::korvo_sdk::impl {
namespace {

constexpr std::int64_t GIB = std::int64_t{1} << 30;

std::int32_t indexOf(std::int64_t offset) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(offset));
}

TEST(SourceProgress, OffsetsGoOnWhenTheIndexWrapsAround) {
  SourceProgress progress;
  for (std::int64_t begin = 0; begin < 13 * GIB; begin += GIB) {
    progress.beginBlock(indexOf(begin));
    EXPECT_EQ(progress.offsetOf(indexOf(begin)), begin);
    EXPECT_EQ(progress.offsetOf(indexOf(begin + GIB - 1)), begin + GIB - 1);
  }
}

TEST(SourceProgress, TheIndexMayWrapAroundInABlock) {
  SourceProgress progress;
  progress.beginBlock(indexOf(3 * GIB));
  EXPECT_EQ(progress.offsetOf(indexOf(4 * GIB - 1)), 4 * GIB - 1);
  EXPECT_EQ(progress.offsetOf(indexOf(4 * GIB)), 4 * GIB);
  progress.beginBlock(indexOf(5 * GIB));
  EXPECT_EQ(progress.offsetOf(indexOf(5 * GIB)), 5 * GIB);
}

TEST(SourceProgress, CountsTheTokensOfTheCurrentBlock) {
  SourceProgress progress;
  for (int i = 0; i < 3; ++i) progress.countToken();
  EXPECT_TRUE(progress.hasInBlock(3));
  EXPECT_FALSE(progress.hasInBlock(4));
  progress.beginBlock(100);
  EXPECT_FALSE(progress.hasInBlock(1));
}

TEST(SourceProgress, AnUnknownOffsetIsInNoBlock) {
  SourceProgress progress;
  progress.countToken();
  progress.forgetOffset();
  EXPECT_EQ(progress.offsetOf(0), Diagnostic::UNKNOWN_OFFSET);
  EXPECT_FALSE(progress.hasInBlock(1));
}

TEST(SourceProgress, KnowsThatTheSourceHasEnded) {
  SourceProgress progress;
  EXPECT_FALSE(progress.hasEnded());
  progress.end();
  EXPECT_TRUE(progress.hasEnded());
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
