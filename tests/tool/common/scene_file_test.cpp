// Tests of readSceneFile().
#include "tools/vsa/common/scene/scene_file.h"

#include <gtest/gtest.h>

#include "tools/vsa/common/output/exit_status.h"

namespace vsa_tools {

namespace {

TEST(SceneFileTest, AFileThatCannotBeOpenedHasNoTime) {
  const SceneFile file = readSceneFile("/nowhere/a.vsa");
  EXPECT_EQ(file.exitStatus, EXIT_USAGE);
  EXPECT_EQ(file.result.status, vsa::ReadStatus::Unreadable);
  EXPECT_EQ(file.seconds, 0);
}

}  // namespace

}  // namespace vsa_tools
