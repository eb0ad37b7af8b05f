// Tests of FileArguments: its values without any option, and the number of threads.
#include "tools/vsa/common/files/file_arguments.h"

#include <gtest/gtest.h>

#include "tools/vsa/common/files/jobs.h"

namespace vsa_tools {

namespace {

TEST(FileArgumentsTest, WithoutJobsThereIsOneThread) {
  EXPECT_EQ(FileArguments().workers(), 1U);
}

TEST(FileArgumentsTest, JobsAreThreads) {
  EXPECT_EQ(workersFor(1000), 1000U);
  EXPECT_GE(workersFor(0), 1U);
}

}  // namespace

}  // namespace vsa_tools
