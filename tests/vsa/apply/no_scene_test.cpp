// Tests of NoScene, the null object for a missing scene: it accepts every call and returns null.
#include "vsa/apply/no_scene.h"

#include <gtest/gtest.h>

#include <vsa/parse.h>
#include "tests/support/byte_source.h"

namespace zn::korvo_sdk::impl {
namespace {

TEST(NoScene, AcceptsEveryCallAndReturnsNull) {
  interfaces::IScene& none = noScene();
  EXPECT_EQ(none.createNode("a", "b", ""), nullptr);
  EXPECT_EQ(none.defineNode("a"), nullptr);
  EXPECT_EQ(none.findNode("b"), nullptr);
  none.removeNode("b");
  none.setFileVersion(3);
  none.setFileTime("now");
  none.pushFileComment("# more");
  none.clearComments();
  EXPECT_EQ(&none, &noScene());
}

TEST(NoScene, ParsesAHeaderWithoutAScene) {
  const char* const text = "# version: 3\n# time: now\n# more\n";
  EXPECT_TRUE(parseString(nullptr, text));
  EXPECT_TRUE(parseVsa(nullptr, vsa_tests::memoryFile(text), true));
  EXPECT_TRUE(parseVsa(nullptr, vsa_tests::memoryFile(text), false));
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
