#include "tools/vsa/common/files/progress.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tools/vsa/common/files/files_progress.h"

namespace vsa_tools {
namespace {

/// A fixture whose progress lines are written to a stream in memory.
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

TEST_F(ProgressTest, FilesCountAsTheirBytes) {
  const std::string folder = testing::TempDir();
  const std::string small = folder + "progress_small.vsa", large = folder + "progress_large.vsa";
  std::ofstream(small) << std::string(100, ' ');
  std::ofstream(large) << std::string(300, ' ');
  {
    FilesProgress progress("reading", {small, large}, stream_, Progress::Clock::duration::zero());
    progress.update(1, 1, 3);
  }
  EXPECT_EQ(written(), "\r" + progressLine("reading", 100, 400) + "\r\x1B[K");
  std::filesystem::remove(small);
  std::filesystem::remove(large);
}

TEST_F(ProgressTest, FilesEndAtAHundredPercent) {
  FilesProgress progress("reading", {"missing", "-"}, stream_, Progress::Clock::duration::zero());
  progress.finish(0);
  EXPECT_EQ(written(), "\r" + progressLine("reading", 1, 2));
}

}  // namespace
}  // namespace vsa_tools
