// Tests of BackLinks, which finds the links that lead to a node.
#include <vsa/back_links.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/api/scene_of.h"

namespace {

using api_test::sceneOf;

std::vector<std::string> pathsOf(std::span<const vsa::InputView> inputs) {
  std::vector<std::string> paths;
  for (const vsa::InputView input : inputs) paths.push_back(input.path());
  return paths;
}

using Paths = std::vector<std::string>;

TEST(BackLinks, FindsWhoRefersToANode) {
  const vsa::Scene scene = sceneOf(R"(
    mesh a: .material = clay; .color |= clay.out;
    mesh b: .parts[0].material = clay; .parts[1].material = glass; .list[0] = clay; .list[1] = b;
    material clay; material glass; material unused;
  )");
  const vsa::BackLinks links(scene);
  EXPECT_EQ(pathsOf(links.of(scene["clay"])),
            (Paths{"a.material", "a.color", "b.parts[0].material", "b.list[0]"}));
  EXPECT_EQ(pathsOf(links.of(scene["glass"])), Paths{"b.parts[1].material"});
  EXPECT_EQ(pathsOf(links.of(scene["b"])), Paths{"b.list[1]"});
  EXPECT_TRUE(links.of(scene["unused"]).empty());
  EXPECT_TRUE(links.of(scene["nosuch"]).empty());
}

TEST(BackLinks, CountsAnInputWithBothLinksTwice) {
  const vsa::Scene scene = sceneOf("mesh a: .m = b; .m |= b.out; mesh b;");
  EXPECT_EQ(pathsOf(vsa::BackLinks(scene).of(scene["b"])), (Paths{"a.m", "a.m"}));
}

TEST(BackLinks, KnowsNothingOfLaterNodesAndOtherScenes) {
  vsa::Scene scene = sceneOf("mesh a: .m = b; mesh b;");
  const vsa::Scene other = sceneOf("mesh a: .m = b; mesh b;");
  const vsa::BackLinks links(scene);
  EXPECT_TRUE(links.of(other["b"]).empty());
  scene.plain().createNode("mesh", "c", "");
  EXPECT_TRUE(links.of(scene["c"]).empty());
  const vsa::NodeView b = scene["b"];
  scene.plain().removeNode("b");
  EXPECT_TRUE(links.of(b).empty());
  EXPECT_TRUE(vsa::BackLinks().of(b).empty());
  EXPECT_TRUE(vsa::BackLinks(vsa::SceneView()).of(b).empty());
}

// The input is as deep as a scene allows. The traversal must not recurse.
TEST(BackLinks, ReachTheDeepestInput) {
  vsa::Scene scene;
  scene.plain().setDepthLimit(zn::korvo_sdk::Scene::MAX_DEPTH_LIMIT);
  zn::korvo_sdk::Node* const node = scene.plain().createNode("mesh", "a", "");
  zn::korvo_sdk::Input* input = node->createInput("o", vsa::ValueType::Object);
  while (input->level() < zn::korvo_sdk::Scene::MAX_DEPTH_LIMIT) {
    input = input->createInput("o", vsa::ValueType::Null);
  }
  input->setNode(node);
  const vsa::BackLinks links(scene);
  ASSERT_EQ(links.of(scene["a"]).size(), 1U);
  EXPECT_EQ(links.of(scene["a"])[0].plain(), input);
}

}  // namespace
