// Tests of views: each type of value, and everything that may be missing.
#include <vsa/view.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vsa/scene/node_type.h>
#include "tests/api/scene_of.h"

namespace {

using api_test::sceneOf;
using vsa::InputView;
using vsa::NodeView;
using vsa::ValueType;

static_assert(std::is_trivially_copyable_v<vsa::SceneView> && sizeof(vsa::SceneView) == 8);
static_assert(std::is_trivially_copyable_v<NodeView> && sizeof(NodeView) == 8);
static_assert(std::is_trivially_copyable_v<InputView> && sizeof(InputView) == 8);
static_assert(std::is_trivially_copyable_v<vsa::ConnectionView>);

// Only a scene that exists longer than the expression converts to a view.
static_assert(std::is_convertible_v<vsa::Scene&, vsa::SceneView>);
static_assert(std::is_convertible_v<const vsa::Scene&, vsa::SceneView>);
static_assert(!std::is_convertible_v<vsa::Scene, vsa::SceneView>);
static_assert(!std::is_convertible_v<const vsa::Scene, vsa::SceneView>);
static_assert(!std::is_constructible_v<vsa::SceneView, vsa::Scene>);
static_assert(!std::is_convertible_v<zn::korvo_sdk::Scene, vsa::SceneView>);

constexpr std::string_view TEXT = R"(
# version: 7
# time: noon
# third
lamp sun: .power = 2.5; .on = true; .count = -3; .mask = 12u; .name = "a\nb"; .all = -1u;
  .color = rgba(1 0.5 0.25); .color |= dusk.outColor; .at = pos3(1 2 3); .target = ball;
  .turn = mat3(1 2 3 4 5 6 7 8 9);
sky dusk;
mesh ball: .points = vec3f[2] {1 2 3, 4 5 6}; .ids = int32[3] {7 8 9}; .pixels = rgba8[1] {1 2 3 4};
  .keys[0].time = 1.5; .keys[1].time = 2.5; .keys[1].on = false; .stops[0] = 0.5; .stops[1] = 1.5;
  .free |= null;
)";

TEST(View, GivesScalarsAndLinks) {
  const vsa::Scene scene = sceneOf(TEXT);
  const NodeView sun = scene["sun"];
  EXPECT_EQ(sun["power"].real(), 2.5);
  EXPECT_EQ(sun["on"].boolean(), true);
  EXPECT_EQ(sun["count"].integer(), -3);
  EXPECT_EQ(sun["mask"].unsignedInteger(), 12U);
  EXPECT_EQ(sun["name"].string(), "a\nb");
  EXPECT_EQ(sun["color"].components<4>(), (std::array{1.0, 0.5, 0.25, 1.0}));
  EXPECT_EQ(sun["at"].components<3>(), (std::array{1.0, 2.0, 3.0}));
  EXPECT_EQ(sun["turn"].components().size(), 9U);
  EXPECT_EQ(sun["turn"].components()[8], 9.0);
  EXPECT_EQ(sun["target"].node(), scene["ball"]);
  EXPECT_EQ(sun["color"].connection().node(), scene["dusk"]);
  EXPECT_EQ(sun["color"].connection().output(), "outColor");
  EXPECT_EQ(sun["color"].type(), ValueType::Rgba);
  EXPECT_EQ(vsa::typeName(sun["color"].type()), "Rgba");
}

TEST(View, TurnsIntegersIntoOtherNumbersWhereNothingIsLost) {
  const vsa::Scene scene = sceneOf(TEXT);
  const NodeView sun = scene["sun"];
  EXPECT_EQ(sun["count"].real(), -3.0);
  EXPECT_EQ(sun["mask"].real(), 12.0);
  EXPECT_FALSE(sun["count"].unsignedInteger());
  EXPECT_FALSE(sun["name"].unsignedInteger());
  EXPECT_EQ(sun["mask"].integer(), 12);
  EXPECT_EQ(sun["count"].unsignedInteger(), std::nullopt);
  EXPECT_EQ(sun["all"].unsignedInteger(), 18446744073709551615U);
  EXPECT_EQ(sun["all"].integer(), std::nullopt);
  EXPECT_EQ(sun["all"].real(), 18446744073709551616.0);
  EXPECT_EQ(sun["power"].integer(), std::nullopt);
}

TEST(View, GivesAZeroAsAnyNumber) {
  const vsa::Scene scene = sceneOf("lamp sun: .count = 0; .mask = 0u;");
  for (const InputView zero : {scene["sun"]["count"], scene["sun"]["mask"]}) {
    EXPECT_EQ(zero.integer(), 0);
    EXPECT_EQ(zero.unsignedInteger(), 0U);
    EXPECT_EQ(zero.real(), 0.0);
  }
}

TEST(View, GivesTheFallbackForOtherTypesAndMissingInputs) {
  const vsa::Scene scene = sceneOf(TEXT);
  const NodeView sun = scene["sun"];
  EXPECT_EQ(sun["name"].real(), std::nullopt);
  EXPECT_EQ(sun["name"].real(1.0), 1.0);
  EXPECT_EQ(sun["power"].real(1.0), 2.5);
  EXPECT_EQ(sun["missing"].real(1.0), 1.0);
  EXPECT_EQ(sun["missing"].boolean(true), true);
  EXPECT_EQ(sun["missing"].integer(4), 4);
  EXPECT_EQ(sun["missing"].unsignedInteger(4), 4U);
  EXPECT_EQ(sun["power"].string("none"), "none");
  EXPECT_EQ(sun["power"].components<3>(), std::nullopt);
  EXPECT_EQ(sun["at"].components<2>(), std::nullopt);
  EXPECT_TRUE(sun["power"].components().empty());
}

// Expects that each function of the view returns an empty result.
void expectMissing(InputView input) {
  EXPECT_FALSE(input);
  EXPECT_EQ(input.name(), "");
  EXPECT_EQ(input.path(), "");
  EXPECT_EQ(input.type(), ValueType::Null);
  EXPECT_EQ(input.elementType(), ValueType::Null);
  EXPECT_EQ(input.boolean(), std::nullopt);
  EXPECT_EQ(input.integer(), std::nullopt);
  EXPECT_EQ(input.unsignedInteger(), std::nullopt);
  EXPECT_EQ(input.real(), std::nullopt);
  EXPECT_EQ(input.string(), std::nullopt);
  EXPECT_TRUE(input.components().empty());
  EXPECT_EQ(input.buffer().problem(), vsa::BufferProblem::Missing);
  EXPECT_TRUE(input.buffer().bytes().empty());
  EXPECT_TRUE(input.buffer<float>().empty());
  EXPECT_FALSE(input.node());
  EXPECT_FALSE(input.owner());
  EXPECT_FALSE(input.connection());
  EXPECT_FALSE(input.connection().node());
  EXPECT_EQ(input.connection().output(), "");
  EXPECT_TRUE(input.elements().empty());
  EXPECT_TRUE(input.members().empty());
  EXPECT_FALSE(input[0]);
  EXPECT_FALSE(input["member"]);
  EXPECT_EQ(input.plain(), nullptr);
}

TEST(View, IsSafeOnWhatIsMissing) {
  const vsa::Scene scene = sceneOf(TEXT);
  expectMissing(InputView());
  expectMissing(scene["nosuch"]["power"]);
  expectMissing(scene["sun"]["nosuch"]);
  expectMissing(scene["sun"][""]);
  expectMissing(scene["sun"]["nosuch"][3]["deeper"]);
  expectMissing(scene["sun"]["power"][0]);
  expectMissing(scene["sun"]["power"]["member"]);
  expectMissing(scene["ball"]["keys"][2]);
  expectMissing(scene["ball"]["keys"]["time"]);
  expectMissing(scene["ball"]["keys"][0]["nosuch"]);
}

template <class Container, class Key>
concept CanLookUp = requires(const Container& container, Key key) {
  container[key];
};
static_assert(CanLookUp<vsa::Scene, const char*> && CanLookUp<NodeView, std::string>);
static_assert(!CanLookUp<vsa::Scene, std::nullptr_t> && !CanLookUp<vsa::SceneView, std::nullptr_t>);
static_assert(!CanLookUp<NodeView, std::nullptr_t> && !CanLookUp<InputView, std::nullptr_t>);

TEST(View, TakesANullNameForTheEmptyName) {
  const vsa::Scene scene = sceneOf(TEXT);
  const char* const null = nullptr;
  EXPECT_FALSE(scene[null]);
  EXPECT_FALSE(scene.view()[null]);
  expectMissing(scene["sun"][null]);
  expectMissing(scene["ball"]["keys"][0][null]);
  EXPECT_EQ(scene["sun"]["power"].string(null), "");
}

TEST(View, HasMissingViewsPastTheEndOfARange) {
  const vsa::Scene scene = sceneOf(TEXT);
  expectMissing(scene["nosuch"].inputs()[0]);
  expectMissing(scene["sun"].inputs()[1000]);
  expectMissing(InputView().members()[0]);
  expectMissing(InputView().elements()[0]);
  expectMissing(scene["sun"]["power"].members()[0]);
  expectMissing(scene["ball"]["keys"][1].members()[2]);
  expectMissing(scene["ball"]["keys"].elements()[2]);
  expectMissing(*scene["nosuch"].inputs().end());
  EXPECT_EQ(vsa::SceneView().comments()[0], "");
  EXPECT_EQ(scene.comments()[3], "");
}

TEST(View, IsSafeOnAMissingNode) {
  const NodeView node = sceneOf(TEXT)["nosuch"];
  EXPECT_FALSE(node);
  EXPECT_EQ(node.name(), "");
  EXPECT_EQ(node.type(), "");
  EXPECT_FALSE(node.isRemoved());
  EXPECT_FALSE(node.isDeclared());
  EXPECT_TRUE(node.inputs().empty());
  EXPECT_EQ(node.plain(), nullptr);
}

TEST(View, IsSafeOnAnEmptyScene) {
  for (const vsa::SceneView scene : {vsa::SceneView(), vsa::Scene().view()}) {
    EXPECT_FALSE(scene["sun"]);
    EXPECT_EQ(scene.nodes().size(), 0U);
    EXPECT_EQ(scene.nodes().begin(), scene.nodes().end());
    EXPECT_TRUE(scene.comments().empty());
    EXPECT_EQ(scene.fileVersion(), 0U);
    EXPECT_EQ(scene.fileTime(), "");
  }
}

TEST(View, FindsNamesOfEveryLength) {
  vsa::Scene scene;
  std::vector<std::string> names;
  for (std::size_t length = 1; length <= 40; ++length) names.push_back(std::string(length, 'x'));
  for (const std::string& name : names) {
    zn::korvo_sdk::Node* const node =
        scene.plain().createNode("lamp", zn::String::copyOf(name), "");
    for (const std::string& input : names) {
      node->createInput(zn::String::copyOf(input), ValueType::Int);
    }
  }
  for (const std::string& name : names) {
    EXPECT_EQ(scene[name].name(), name);
    EXPECT_EQ(scene[name].type(), "lamp");
    for (const std::string& input : names) EXPECT_EQ(scene[name][input].name(), input);
    EXPECT_FALSE(scene[name + "y"]);
    EXPECT_FALSE(scene[name].operator[](name + "y"));
  }
}

TEST(View, SaysWhereAnInputIs) {
  const vsa::Scene scene = sceneOf(TEXT);
  const InputView time = scene["ball"]["keys"][1]["time"];
  EXPECT_EQ(time.path(), "ball.keys[1].time");
  EXPECT_EQ(time.name(), "time");
  EXPECT_EQ(time.owner(), scene["ball"]);
  EXPECT_EQ(time.real(), 2.5);
}

TEST(View, GivesTheHeader) {
  const vsa::Scene scene = sceneOf(TEXT);
  EXPECT_EQ(scene.fileVersion(), 7U);
  EXPECT_EQ(scene.fileTime(), "noon");
  ASSERT_EQ(scene.comments().size(), 3U);
  EXPECT_EQ(scene.comments()[2], "# third");
}

TEST(View, OutlivesWhatWasRemoved) {
  vsa::Scene scene = sceneOf(TEXT);
  const NodeView dusk = scene["dusk"];
  const InputView color = scene["sun"]["color"];
  const InputView target = scene["sun"]["target"];
  scene.plain().removeNode("dusk");
  scene.plain().removeNode("ball");
  EXPECT_TRUE(dusk.isRemoved());
  EXPECT_EQ(dusk.name(), "dusk");
  EXPECT_FALSE(color.connection());
  EXPECT_FALSE(target.node());
  EXPECT_FALSE(scene["dusk"]);
}

TEST(View, InstantiatesNoDeclaredInput) {
  zn::korvo_sdk::registerNodeType(
      {.name = "viewedLamp", .inputs = {{.name = "power", .type = ValueType::Real}}});
  const vsa::Scene scene = sceneOf("viewedLamp sun;");
  zn::korvo_sdk::unregisterNodeType("viewedLamp");
  EXPECT_TRUE(scene["sun"].isDeclared());
  EXPECT_FALSE(sceneOf(TEXT)["sun"].isDeclared());
  EXPECT_FALSE(scene["sun"]["power"]);
  EXPECT_EQ(scene["sun"]["power"].real(3.0), 3.0);
  EXPECT_TRUE(scene["sun"].inputs().empty());
}

}  // namespace
