// Readings that keep only some nodes.
#include <gtest/gtest.h>

#include <string>

#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/host_scene.h"

namespace vsa_tests {

namespace {

using vsa::ReadOptions;
using vsa::ReadResult;

const std::string TEXT =
    "# version: 3\n"
    "lamp sun: .power = 1; .label = \"noon\"; .shade |= wall.out; .next = moon; .self = sun;\n"
    "lamp moon: .power = 2; .next = sun; .shade |= sun.out;\n"
    "mesh wall: .points = float[3] {1 2}; .lit = sun; .n = 1; .n = 2.5; .gone = nobody;\n"
    "define other; remove moon; .n = \"x\"; other.a = 5;\n";

ReadOptions wanting(std::vector<std::string> names, std::vector<std::string> types = {}) {
  ReadOptions options;
  options.wantedNames = std::move(names);
  options.wantedTypes = std::move(types);
  return options;
}

std::string nodesOf(const vsa::Scene& scene) {
  std::string names;
  for (const vsa::NodeView node : scene.nodes()) names += std::string(node.name()) + ' ';
  return names;
}

TEST(WantedNodes, AreKeptByName) {
  const ReadResult result = vsa::readText(TEXT, wanting({"sun"}));
  ASSERT_TRUE(result.isComplete()) << result.message;
  EXPECT_EQ(nodesOf(result.scene), "sun ");
  EXPECT_EQ(result.scene.fileVersion(), 3U);
  const zn::korvo_sdk::Scene& plain = result.scene.plain();
  zn::korvo_sdk::Node& sun = *plain.nodeAt(0);
  EXPECT_EQ(sun.input("power")->real(), 0.0);
  EXPECT_EQ(sun.input("power")->integer(), 1);
  EXPECT_EQ(sun.input("shade")->connection(), nullptr);
  EXPECT_EQ(sun.input("next")->node(), nullptr);
  EXPECT_EQ(sun.input("self")->node(), &sun);
}

TEST(WantedNodes, AreKeptByType) {
  EXPECT_EQ(nodesOf(vsa::readText(TEXT, wanting({}, {"mesh"})).scene), "wall ");
  EXPECT_EQ(nodesOf(vsa::readText(TEXT, wanting({"other"}, {"lamp"})).scene), "sun other ");
  EXPECT_EQ(nodesOf(vsa::readText(TEXT, wanting({"nothing"})).scene), "");
}

TEST(WantedNodes, AreCheckedAsAllOthers) {
  const ReadResult whole = vsa::readText(TEXT);
  const ReadResult some = vsa::readText(TEXT, wanting({"sun"}));
  EXPECT_EQ(some.diagnostics.size(), whole.diagnostics.size());
  EXPECT_EQ(some.warningCount, whole.warningCount);
  EXPECT_EQ(some.errorCount, whole.errorCount);
  for (std::size_t i = 0; i < some.diagnostics.size(); ++i) {
    EXPECT_EQ(some.diagnostics[i].range.begin, whole.diagnostics[i].range.begin);
  }
}

TEST(WantedNodes, LeaveOtherNodesOfTheSceneAsTheyAre) {
  vsa::Scene scene;
  ASSERT_TRUE(vsa::readTextInto(scene, "lamp moon: .power = 9;").isComplete());
  ASSERT_TRUE(vsa::readTextInto(scene, TEXT, wanting({"sun"})).isComplete());
  EXPECT_EQ(nodesOf(scene), "moon sun ");
  EXPECT_EQ(scene.plain().nodeAt(0)->input("power")->integer(), 9);
}

TEST(WantedNodes, WorkForAHostsScene) {
  HostScene scene;
  ASSERT_TRUE(vsa::readTextInto(scene, TEXT, wanting({"sun"})).isComplete());
  for (const std::string& call : scene.options.calls) {
    EXPECT_EQ(call.find("moon"), std::string::npos) << call;
    EXPECT_EQ(call.find("wall"), std::string::npos) << call;
  }
}

TEST(WantedNodes, TakeNoMemoryForValuesThatAreDropped) {
  std::string text = "mesh m:\n";
  for (int i = 0; i < 200; ++i) text += ".b" + std::to_string(i) + " = byte[1000000] {1};\n";
  EXPECT_EQ(vsa::readText(text).status, vsa::ReadStatus::OverLimit);
  EXPECT_TRUE(vsa::readText(text, wanting({"other"})).isComplete());
}

}  // namespace

}  // namespace vsa_tests
