// Tests of the header of an edited scene: reading its comments as a text gives the same header, a
// header that comments cannot carry is refused, and the header can be cleared.
#include <string>

#include <gtest/gtest.h>

#include "tests/api/scene_of.h"

namespace {

using api_test::sceneOf;
using vsa::EditError;

// Reads the comments of the scene as a text and expects the same header.
void expectReadsBack(const vsa::Scene& scene) {
  std::string text;
  for (const std::string_view comment : scene.comments()) text.append(comment) += '\n';
  const vsa::Scene read = sceneOf(text);
  EXPECT_EQ(read.fileVersion(), scene.fileVersion()) << text;
  EXPECT_EQ(read.fileTime(), scene.fileTime()) << text;
  ASSERT_EQ(read.comments().size(), scene.comments().size()) << text;
  for (std::size_t i = 0; i < read.comments().size(); ++i) {
    EXPECT_EQ(read.comments()[i], scene.comments()[i]);
  }
}

TEST(Header, IsCarriedByComments) {
  vsa::Scene scene;
  EXPECT_TRUE(scene.addComment("a kitchen"));
  expectReadsBack(scene);
  EXPECT_TRUE(scene.setFileVersion(3));
  EXPECT_TRUE(scene.setFileTime("2024-05-14 09:30:00"));
  expectReadsBack(scene);
  EXPECT_EQ(scene.fileVersion(), 3U);
  EXPECT_EQ(scene.fileTime(), "2024-05-14 09:30:00");
  EXPECT_TRUE(scene.setFileVersion(18446744073709551615U));
  EXPECT_TRUE(scene.setFileTime("noon"));
  expectReadsBack(scene);
  ASSERT_EQ(scene.comments().size(), 3U);
  EXPECT_EQ(scene.comments()[0], "# time: noon");
  EXPECT_EQ(scene.comments()[1], "# version: 18446744073709551615");
  EXPECT_EQ(scene.comments()[2], "# a kitchen");
  EXPECT_TRUE(scene.setFileTime(""));
  EXPECT_EQ(scene.comments().size(), 2U);
  expectReadsBack(scene);
}

TEST(Header, IsSetByCommentsAsInATextThatHasThem) {
  vsa::Scene scene;
  EXPECT_TRUE(scene.addComment("# version: 5"));
  EXPECT_TRUE(scene.addComment("lifetime: 4 s"));
  EXPECT_TRUE(scene.addComment("#"));
  EXPECT_TRUE(scene.addComment("# time:"));
  EXPECT_EQ(scene.fileVersion(), 5U);
  EXPECT_EQ(scene.fileTime(), "4 s");
  expectReadsBack(scene);
}

TEST(Header, RefusesWhatCommentsCannotCarry) {
  vsa::Scene scene;
  EXPECT_EQ(scene.addComment("a\nb"), EditError::BadComment);
  EXPECT_EQ(scene.addComment("colour conversion: linear"), EditError::BadVersionComment);
  EXPECT_EQ(scene.setFileTime(" noon"), EditError::BadTime);
  EXPECT_EQ(scene.setFileTime(std::string_view("a\0b", 3)), EditError::NulCharacter);
  EXPECT_TRUE(scene.comments().empty());
}

TEST(Header, CanBeCleared) {
  vsa::Scene scene = sceneOf("# version: 5\n# time: noon\n");
  EXPECT_TRUE(scene.clearHeader());
  EXPECT_EQ(scene.fileVersion(), 1U);
  EXPECT_EQ(scene.fileTime(), "");
  EXPECT_TRUE(scene.comments().empty());
}

}  // namespace
