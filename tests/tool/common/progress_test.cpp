#include "tools/vsa/common/files/progress.h"

#include <gtest/gtest.h>

namespace vsa_tools {
namespace {

/// What is written to a stream in memory.
class ProgressTest : public testing::Test {
 protected:
  void TearDown() override {
    std::fclose(stream_);
    std::free(text_);
  }
  std::string written() {
    std::fflush(stream_);
    return std::string(text_, size_);
  }

  char* text_ = nullptr;
  std::size_t size_ = 0;
  std::FILE* stream_ = ::open_memstream(&text_, &size_);
};

TEST_F(ProgressTest, TheLineHasABarAndAPercentage) {
  EXPECT_EQ("checking [                    ]   0 %", progressLine("checking", 0, 7));
  EXPECT_EQ("checking [#####               ]  25 %", progressLine("checking", 1, 4));
  EXPECT_EQ("checking [####################] 100 %", progressLine("checking", 4, 4));
  EXPECT_EQ("checking [####################] 100 %", progressLine("checking", 9, 4));
  EXPECT_EQ("checking [####################] 100 %", progressLine("checking", 0, 0));
}

TEST_F(ProgressTest, TheLineIsShownAndRemoved) {
  {
    Progress progress("checking", stream_, Progress::Clock::duration::zero());
    progress.update(1, 2);
    EXPECT_EQ("\r" + progressLine("checking", 1, 2), written());
    progress.hide();
    progress.hide();
  }
  EXPECT_EQ("\r" + progressLine("checking", 1, 2) + "\r\x1B[K", written());
}

TEST_F(ProgressTest, NothingIsShownBeforeTheDelay) {
  {
    Progress progress("checking", stream_, std::chrono::hours(1));
    progress.update(1, 2);
  }
  EXPECT_EQ("", written());
}

TEST_F(ProgressTest, NothingIsShownIfThereIsNoTerminal) {
  Progress progress("checking", nullptr, Progress::Clock::duration::zero());
  progress.update(1, 2);
  progress.hide();
  EXPECT_EQ("", written());
}

}  // namespace
}  // namespace vsa_tools
