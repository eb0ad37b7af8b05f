// Tests of the ranges of views: nodes, inputs, elements, members and comments.
#include <algorithm>
#include <ranges>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vsa/read.h>
#include "tests/api/scene_of.h"

namespace {

using api_test::sceneOf;
using vsa::InputView;
using vsa::NodeView;

template <class Range>
constexpr bool IS_INDEXED =
    std::ranges::random_access_range<Range>&& std::ranges::sized_range<Range>&& std::ranges::view<
        Range>&& std::ranges::borrowed_range<Range>&& std::ranges::common_range<Range>;
static_assert(IS_INDEXED<NodeView::InputRange>);
static_assert(IS_INDEXED<InputView::ElementRange>);
static_assert(IS_INDEXED<InputView::MemberRange>);
static_assert(IS_INDEXED<vsa::SceneView::CommentRange>);
static_assert(std::ranges::forward_range<vsa::NodeRange> &&
              std::ranges::sized_range<vsa::NodeRange> && std::ranges::view<vsa::NodeRange> &&
              std::ranges::borrowed_range<vsa::NodeRange>);
static_assert(std::ranges::contiguous_range<vsa::TypedBuffer<float, 3>> &&
              std::ranges::sized_range<vsa::TypedBuffer<float, 3>> &&
              std::ranges::view<vsa::TypedBuffer<float, 3>>);

template <class Range>
std::vector<std::string> namesOf(const Range& range) {
  std::vector<std::string> names;
  for (const auto item : range) names.emplace_back(item.name());
  return names;
}

using Names = std::vector<std::string>;

TEST(Range, WalksNodesInTheOrderOfTheirCreation) {
  vsa::Scene scene = sceneOf("lamp b; lamp a; mesh d; lamp c;");
  EXPECT_EQ(namesOf(scene.nodes()), (Names{"b", "a", "d", "c"}));
  scene.plain().removeNode("b");
  scene.plain().removeNode("d");
  EXPECT_EQ(namesOf(scene.nodes()), (Names{"a", "c"}));
  EXPECT_EQ(scene.nodes().size(), 2U);
  scene.plain().removeNode("c");
  scene.plain().removeNode("a");
  EXPECT_EQ(namesOf(scene.nodes()), Names{});
}

TEST(Range, WorksWithStandardAlgorithms) {
  const vsa::Scene scene = sceneOf("lamp b; mesh a; mesh d; lamp c: .z = 1; .y = 2; .x = 3;");
  const auto isMesh = [](NodeView node) { return node.type() == "mesh"; };
  EXPECT_EQ(std::ranges::count_if(scene.nodes(), isMesh), 2);
  EXPECT_EQ((*std::ranges::find(scene.nodes(), "a", &NodeView::name)).type(), "mesh");
  Names meshes;
  for (const NodeView node : scene.nodes() | std::views::filter(isMesh)) {
    meshes.emplace_back(node.name());
  }
  EXPECT_EQ(meshes, (Names{"a", "d"}));
  const auto inputs = scene["c"].inputs();
  EXPECT_EQ(namesOf(inputs), (Names{"z", "y", "x"}));
  EXPECT_EQ(namesOf(inputs | std::views::reverse), (Names{"x", "y", "z"}));
  EXPECT_EQ(inputs[2].name(), "x");
  EXPECT_EQ(inputs.end()[-1].name(), "x");
  EXPECT_EQ((inputs.begin() + 2) - inputs.begin(), 2);
  EXPECT_LT(inputs.begin(), inputs.end());
}

TEST(Range, WalksElementsAndMembers) {
  const vsa::Scene scene = sceneOf("rig r: .k[0] = 1; .k[1] = 2; .o.b = 1; .o.a = 2;");
  std::vector<std::int64_t> numbers;
  for (const InputView element : scene["r"]["k"].elements()) {
    numbers.push_back(element.integer(0));
  }
  EXPECT_EQ(numbers, (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(namesOf(scene["r"]["o"].members()), (Names{"b", "a"}));
  EXPECT_TRUE(scene["r"]["o"].elements().empty());
  EXPECT_TRUE(scene["r"]["k"].members().empty());
}

// A program must not read into a scene during a traversal. If it does, nothing may crash.
TEST(Range, SurvivesChangesOfTheSceneDuringAWalk) {
  vsa::Scene scene = sceneOf("lamp a: .x = 1; lamp b; lamp c;");
  Names seen;
  for (const NodeView node : scene.nodes()) {
    seen.emplace_back(node.name());
    if (seen.size() > 8) break;
    if (node.name() != "a") continue;
    scene.plain().removeNode("a");
    scene.plain().removeNode("b");
    zn::korvo_sdk::impl::parseString(&scene.plain(), "lamp d; lamp e;");
  }
  EXPECT_EQ(seen, (Names{"a", "c", "d", "e"}));

  const auto inputs = scene["c"].inputs();
  zn::korvo_sdk::impl::parseString(&scene.plain(), "c.x = 1; c.y = 2;");
  EXPECT_EQ(inputs.size(), 0U);
  EXPECT_EQ(scene["c"].inputs().size(), 2U);
}

TEST(Range, SurvivesReadingIntoTheSceneDuringAWalk) {
  vsa::Scene scene = sceneOf("lamp a: .x = 1; lamp b; lamp c;");
  Names seen;
  for (const NodeView node : scene.nodes()) {
    seen.emplace_back(node.name());
    if (seen.size() > 8) break;
    if (node.name() != "a") continue;
    EXPECT_TRUE(vsa::readTextInto(scene, "remove b; lamp d; a.y = 2;").isComplete());
  }
  EXPECT_EQ(seen, (Names{"a", "c", "d"}));
  EXPECT_EQ(scene["a"].inputs().size(), 2U);
}

}  // namespace
