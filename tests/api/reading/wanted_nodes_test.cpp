// Tests of readings that keep only some nodes.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/host_scene.h"

namespace vsa_tests {

namespace {

using vsa::ReadOptions;
using vsa::ReadResult;

const std::string WANTED_TEXT =
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
  const ReadResult result = vsa::readText(WANTED_TEXT, wanting({"sun"}));
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
  EXPECT_EQ(nodesOf(vsa::readText(WANTED_TEXT, wanting({}, {"mesh"})).scene), "wall ");
  EXPECT_EQ(nodesOf(vsa::readText(WANTED_TEXT, wanting({"other"}, {"lamp"})).scene), "sun other ");
  EXPECT_EQ(nodesOf(vsa::readText(WANTED_TEXT, wanting({"nothing"})).scene), "");
}

TEST(WantedNodes, MayBeThousands) {
  std::string text;
  std::vector<std::string> names;
  std::vector<std::string> types;
  for (int i = 0; i < 10'000; ++i) {
    const std::string number = std::to_string(i);
    text += "t" + number + " n" + number + ";\n";
    names.push_back("n" + std::to_string(2 * i));
    types.push_back("t" + std::to_string(4 * i + 1));
  }
  const ReadResult result = vsa::readText(text, wanting(names, types));
  ASSERT_TRUE(result.isComplete()) << result.message;
  std::string expected;
  for (int i = 0; i < 10'000; ++i) {
    if (i % 4 != 3) expected += "n" + std::to_string(i) + ' ';
  }
  EXPECT_EQ(nodesOf(result.scene), expected);
}

TEST(WantedNodes, AreCheckedAsAllOthers) {
  const ReadResult whole = vsa::readText(WANTED_TEXT);
  const ReadResult some = vsa::readText(WANTED_TEXT, wanting({"sun"}));
  EXPECT_EQ(some.diagnostics.size(), whole.diagnostics.size());
  EXPECT_EQ(some.warningCount, whole.warningCount);
  EXPECT_EQ(some.errorCount, whole.errorCount);
  for (std::size_t i = 0; i < some.diagnostics.size(); ++i) {
    EXPECT_EQ(some.diagnostics[i].range.begin, whole.diagnostics[i].range.begin);
  }
}

TEST(WantedNodes, HaveTheMessagesOfAllNodes) {
  const std::string text = "a x: .n = 1; .n = y; .m = x;\na y: .n = 1; .n = x; .gone = z;\n";
  const ReadResult whole = vsa::readText(text);
  for (const std::string name : {"x", "y", "none"}) {
    const ReadResult some = vsa::readText(text, wanting({name}));
    ASSERT_EQ(some.diagnostics.size(), whole.diagnostics.size());
    std::multiset<std::string> lines;
    for (const vsa::Diagnostic& found : whole.diagnostics) lines.insert(found.message);
    for (const vsa::Diagnostic& found : some.diagnostics) {
      EXPECT_EQ(lines.count(found.message), 1U) << found.message;
    }
  }
}

TEST(WantedNodes, HaveTheLimitsOfTheSceneForNodesThatAreDropped) {
  vsa::Scene scene;
  scene.plain().setEmptyElementLimit(2);
  const vsa::ReadOutcome elements = vsa::readTextInto(scene, "a x: .v[9] = 1;", wanting({"y"}));
  EXPECT_EQ(elements.limit, vsa::Limit::EmptyElements);
  scene.plain().setDepthLimit(1);
  const vsa::ReadOutcome depth = vsa::readTextInto(scene, "a x: .v.w = 1;", wanting({"y"}));
  EXPECT_EQ(depth.limit, vsa::Limit::Depth);
}

TEST(WantedNodes, LeaveOtherNodesOfTheSceneAsTheyAre) {
  vsa::Scene scene;
  ASSERT_TRUE(vsa::readTextInto(scene, "lamp moon: .power = 9;").isComplete());
  ASSERT_TRUE(vsa::readTextInto(scene, WANTED_TEXT, wanting({"sun"})).isComplete());
  EXPECT_EQ(nodesOf(scene), "moon sun ");
  EXPECT_EQ(scene.plain().nodeAt(0)->input("power")->integer(), 9);
}

TEST(WantedNodes, MayAssignToOtherNodesOfTheScene) {
  vsa::Scene scene;
  ASSERT_TRUE(vsa::readTextInto(scene, "a old: .x = 1;").isComplete());
  const std::string text = "old.x = 5; a k: .r = old; old.y |= k.out;";
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, text, wanting({"k"}));
  EXPECT_TRUE(outcome.isComplete()) << outcome.message;
  EXPECT_EQ(outcome.applied.nodes, 1U);
  EXPECT_EQ(nodesOf(scene), "old k ");
  EXPECT_EQ(scene.plain().nodeAt(0)->input("x")->integer(), 1);
  EXPECT_EQ(scene.plain().nodeAt(1)->input("r")->node(), nullptr);
  EXPECT_EQ(vsa::readTextInto(scene, "remove old; old.x = 5;", wanting({"k"})).status,
            vsa::ReadStatus::StoppedByError);
  EXPECT_EQ(nodesOf(scene), "old k ");
}

TEST(WantedNodes, WorkForAHostsScene) {
  HostScene scene;
  ASSERT_TRUE(vsa::readTextInto(scene, WANTED_TEXT, wanting({"sun"})).isComplete());
  for (const std::string& call : scene.options.calls) {
    EXPECT_EQ(call.find("moon"), std::string::npos) << call;
    EXPECT_EQ(call.find("wall"), std::string::npos) << call;
  }
}

// An input of a dropped node belongs to a scene of the library, which refuses a reference to an
// input of another type. An input of the host's scene gets each reference.
TEST(WantedNodes, OfAHostsSceneReportAReferenceThatADroppedInputRefuses) {
  HostScene scene;
  const std::string text = "lamp a: .v = 1; .v = b;\nlamp b: .v = 1; .v = a;\n";
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, text, wanting({"a"}));
  ASSERT_EQ(outcome.diagnostics.size(), 1U);
  EXPECT_EQ(outcome.diagnostics[0].id, vsa::DiagnosticId::CannotAssignNode);
  EXPECT_EQ(outcome.diagnostics[0].inputPath, "b.v");
}

TEST(WantedNodes, LoseAReferenceIfTheNextIsToADroppedNode) {
  vsa::Scene scene;
  ASSERT_TRUE(vsa::readTextInto(scene, "lamp a: .w = a;").isComplete());
  EXPECT_EQ(scene["a"]["w"].node().name(), "a");
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp b; a.w = b;", wanting({"a"}));
  EXPECT_TRUE(outcome.isComplete()) << outcome.message;
  EXPECT_FALSE(scene["a"]["w"].node());
}

TEST(WantedNodes, TakeNoMemoryForValuesThatAreDropped) {
  std::string text = "mesh m:\n";
  for (int i = 0; i < 200; ++i) text += ".b" + std::to_string(i) + " = byte[1000000] {1};\n";
  vsa::ReadOptions options;
  options.limits.memory = 100'000'000;
  EXPECT_EQ(vsa::readText(text, options).status, vsa::ReadStatus::OverLimit);
  options.wantedNames = {"other"};
  EXPECT_TRUE(vsa::readText(text, options).isComplete());
}

// The header is complete even if only some of the nodes are kept.
TEST(WantedNodes, LeaveTheHeaderWhole) {
  const ReadResult result =
      vsa::readText("# version: 3\n# time: noon\n# third\nlamp a; lamp b;", wanting({"b"}));
  EXPECT_EQ(result.scene.fileVersion(), 3U);
  EXPECT_EQ(result.scene.fileTime(), "noon");
  EXPECT_EQ(result.scene.comments().size(), 3U);
}

TEST(WantedNodes, MayBeRemovedAndMadeAgain) {
  const std::string text =
      "lamp a: .x = 1; lamp b: .x = 2; remove a; remove b; remove c; define a; define b; a.x = 3;";
  const ReadResult result = vsa::readText(text, wanting({"a"}));
  EXPECT_EQ(nodesOf(result.scene), "a ");
  EXPECT_EQ(result.scene["a"]["x"].integer(), 3);
  EXPECT_EQ(result.diagnostics.size(), vsa::readText(text).diagnostics.size());
}

}  // namespace

}  // namespace vsa_tests
