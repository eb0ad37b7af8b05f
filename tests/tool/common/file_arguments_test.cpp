// Tests of FileArguments: its values without any option.
#include "tools/vsa/common/files/file_arguments.h"

#include <gtest/gtest.h>

namespace vsa_tools {

namespace {

TEST(FileArgumentsTest, WithoutJobsThereIsOneThread) {
  EXPECT_EQ(FileArguments().workers(), 1U);
}

}  // namespace

}  // namespace vsa_tools
