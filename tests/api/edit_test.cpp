// Tests of editing: an edited scene is the same as a scene that is read from a text with the same
// content. A change that is not possible is refused with a reason and changes nothing.
#include <vsa/edit.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vsa/scene/node_type.h>
#include <vsa/text_rules.h>
#include <vsa/write.h>
#include "tests/api/scene_of.h"

namespace {

using api_test::dumpOf;
using api_test::sceneOf;
using vsa::EditError;
using vsa::ElementType;
using vsa::Status;
using vsa::ValueType;

#define EXPECT_DONE(change) EXPECT_EQ((change).error(), EditError::None)
#define EXPECT_REFUSED(change, reason) EXPECT_EQ((change).error(), EditError::reason)

TEST(Edit, MakesWhatATextMakes) {
  vsa::Scene scene;
  const vsa::Node sun = scene.addNode("lamp", "sun");
  const vsa::Node dusk = scene.addNode("sky", "dusk");
  EXPECT_DONE(sun.set("on", true));
  EXPECT_DONE(sun.set("count", -3));
  EXPECT_DONE(sun.set("mask", 12U));
  EXPECT_DONE(sun.set("all", std::numeric_limits<std::uint64_t>::max()));
  EXPECT_DONE(sun.set("least", std::numeric_limits<std::int64_t>::min()));
  EXPECT_DONE(sun.set("power", 2.5F));
  EXPECT_DONE(sun.set("name", "a\nb\xFF"));
  EXPECT_DONE(sun.set("label", std::string(5000, 'x')));
  EXPECT_DONE(sun.set("v2", vsa::vec2(1, 2)));
  EXPECT_DONE(sun.set("v3", vsa::vec3(1, 2, 3)));
  EXPECT_DONE(sun.set("v4", vsa::vec4(1, 2, 3, 4)));
  EXPECT_DONE(sun.set("p2", vsa::pos2(1, 2)));
  EXPECT_DONE(sun.set("p3", vsa::pos3(1, 2, 3)));
  EXPECT_DONE(sun.set("q", vsa::quat(0, 0, 0, 1)));
  EXPECT_DONE(sun.set("c", vsa::rgba(1, 0.5, 0.25)));
  EXPECT_DONE(sun.set("m3", vsa::mat3(std::array<double, 9>{1, 2, 3, 4, 5, 6, 7, 8, 9})));
  EXPECT_DONE(sun.set("m4", vsa::mat4(std::array<double, 16>{1})));
  EXPECT_DONE(sun.add("to").refer(dusk));
  EXPECT_DONE(sun.add("nowhere").referToNone());
  EXPECT_DONE(sun.add("free").disconnect());
  EXPECT_DONE(sun["c"].connect(dusk, "outColor"));

  EXPECT_EQ(dumpOf(scene), dumpOf(sceneOf(R"(
lamp sun: .on = true; .count = -3; .mask = 12u; .all = -1u; .least = -9223372036854775808;
  .power = 2.5; .name = "a\nb\xff"; .label = ")" +
                                          std::string(5000, 'x') + R"(";
  .v2 = vec2(1 2); .v3 = vec3(1 2 3); .v4 = vec4(1 2 3 4); .p2 = pos2(1 2); .p3 = pos3(1 2 3);
  .q = quat(0 0 0 1); .c = rgba(1 0.5 0.25); .m3 = mat3(1 2 3 4 5 6 7 8 9);
  .m4 = mat4(1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0); .to = dusk; .nowhere = null; .free |= null;
  .c |= dusk.outColor;
sky dusk;
)")));
}

TEST(Edit, SetsAValueThatWasMadeFromATemporaryTuple) {
  vsa::Scene scene;
  const vsa::Value value = vsa::vec3(1, 2, 3);
  const vsa::Value other = vsa::rgba(4, 5, 6, 7);
  const vsa::Node sun = scene.addNode("lamp", "sun");
  EXPECT_DONE(sun.set("v", value));
  EXPECT_DONE(sun.set("c", vsa::Value(other)));
  EXPECT_EQ(sun["v"].components<3>(), (std::array{1.0, 2.0, 3.0}));
  EXPECT_EQ(sun["c"].components<4>(), (std::array{4.0, 5.0, 6.0, 7.0}));
  EXPECT_FALSE(std::equal(value.tuple()->components().begin(), value.tuple()->components().end(),
                          other.tuple()->components().begin()));
}

TEST(Edit, MakesArraysAndObjects) {
  vsa::Scene scene;
  const vsa::Node rig = scene.addNode("rig", "r");
  const vsa::Input stops = rig.add("stops");
  EXPECT_DONE(stops.makeArray(ValueType::Real));
  EXPECT_DONE(stops.append(0.5));
  EXPECT_DONE(stops.append(1.5));
  const vsa::Input keys = rig.add("keys");
  EXPECT_DONE(keys.makeArray(ValueType::Object));
  EXPECT_DONE(keys.append().set("time", 1.0));
  EXPECT_DONE(keys.append().makeObject());
  const vsa::Input nested = rig.add("nested");
  EXPECT_DONE(nested.makeArray(ValueType::Array));
  const vsa::Input row = nested.append();
  EXPECT_DONE(row.makeArray(ValueType::Int));
  EXPECT_DONE(row.append(7));
  const vsa::Input links = rig.add("links");
  EXPECT_DONE(links.makeArray(ValueType::Null));
  EXPECT_DONE(links.append().refer(rig));
  EXPECT_DONE(links.append().connect(rig, "out"));
  EXPECT_DONE(rig.add("empty").makeObject());
  EXPECT_DONE(rig.add("lens").set("fstop", 2.8));
  EXPECT_EQ(dumpOf(scene), dumpOf(sceneOf(R"(
rig r: .stops[0] = 0.5; .stops[1] = 1.5; .keys[0].time = 1.0; .keys[1] = {}; .nested[0][0] = 7;
  .links[0] = r; .links[1] |= r.out; .empty = {}; .lens.fstop = 2.8;
)")));
}

TEST(Edit, ReplacesValuesOfOtherTypes) {
  vsa::Scene scene = sceneOf(R"(rig r: .a = 1; .b = "text"; .c = vec3(1 2 3); .d = float[1] {1};
    .e[0].x = 1; .f.x.y = 1; .g = r; .h |= null; .i |= r.out; .s = "short";)");
  std::vector<std::string> names;
  for (const vsa::NodeView::InputRange inputs = scene["r"].inputs();
       const vsa::InputView i : inputs) {
    names.emplace_back(i.name());
  }
  for (const std::string& name : names) {
    const vsa::Input input = scene["r"][name];
    EXPECT_DONE(input.set(2.5));
    EXPECT_EQ(input.real(), 2.5);
    EXPECT_DONE(input.set("text"));
    EXPECT_EQ(input.string(), "text");
    EXPECT_DONE(input.makeArray(ValueType::Int));
    EXPECT_DONE(input.append(1));
    EXPECT_DONE(input.setBuffer(ElementType::Float, std::array{1.0F}));
    EXPECT_DONE(input.makeObject());
    EXPECT_DONE(input.set("member", vsa::vec2(1, 2)));
    EXPECT_DONE(input.refer(scene["r"]));
    EXPECT_DONE(input.clear());
    EXPECT_EQ(input.type(), ValueType::Null);
  }
  EXPECT_EQ(scene["r"]["i"].connection().output(), "out");  // the connection remains
}

TEST(Edit, RemovesInputsInAnyOrder) {
  for (const int count : {1, 2, 3, 9, 40}) {
    for (const int step : {1, 2, 7}) {
      vsa::Scene scene;
      const vsa::Node node = scene.addNode("rig", "r");
      std::vector<std::string> names;
      for (int i = 0; i < count; ++i) names.push_back("input" + std::to_string(i));
      for (const std::string& name : names) EXPECT_DONE(node.set(name, name));
      for (std::size_t at = 0; !names.empty();
           at = (at + static_cast<std::size_t>(step)) % names.size()) {
        at %= names.size();
        EXPECT_DONE(node.remove(names[at]));
        EXPECT_REFUSED(node.remove(names[at]), Missing);
        names.erase(names.begin() + static_cast<std::ptrdiff_t>(at));
        ASSERT_EQ(node.inputs().size(), names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
          ASSERT_EQ(node.inputs()[i].name(), names[i]);
          ASSERT_EQ(node[names[i]].string(), names[i]);
        }
        if (names.empty()) break;
      }
    }
  }
}

TEST(Edit, RemovesMembersAndElements) {
  vsa::Scene scene = sceneOf("rig r: .o.a = 1; .o.b = 2; .o.c = 3; .k[4] = 1;");
  const vsa::Input object = scene["r"]["o"];
  const vsa::Input b = object["b"];
  EXPECT_DONE(object.remove("b"));
  EXPECT_EQ(object.members().size(), 2U);
  EXPECT_EQ(object["c"].integer(), 3);
  EXPECT_FALSE(object["b"]);
  EXPECT_EQ(b.type(), ValueType::Null);
  EXPECT_REFUSED(b.set(1), Removed);
  const vsa::Input array = scene["r"]["k"];
  const vsa::Input last = array[4];
  EXPECT_DONE(array.resize(2));
  EXPECT_EQ(array.elements().size(), 2U);
  EXPECT_REFUSED(last.set(1), Removed);
  EXPECT_DONE(array.resize(3));
  EXPECT_EQ(array[2].integer(), 0);
}

TEST(Edit, RemovesNodesWithTheirLinks) {
  vsa::Scene scene = sceneOf("rig a: .to = b; .from |= b.out; rig b: .x = 1;");
  const vsa::Node b = scene["b"];
  const vsa::Input x = b["x"];
  EXPECT_DONE(scene.removeNode(b));
  EXPECT_REFUSED(scene.removeNode(b), Removed);
  EXPECT_FALSE(scene["b"]);
  EXPECT_FALSE(scene["a"]["to"].node());
  EXPECT_FALSE(scene["a"]["from"].connection());
  EXPECT_REFUSED(b.set("y", 1), Removed);
  EXPECT_REFUSED(x.set(1), Removed);
  EXPECT_REFUSED(scene["a"]["to"].refer(b), Removed);
  EXPECT_TRUE(scene.addNode("rig", "b"));
}

TEST(Edit, RefusesWhatIsMissing) {
  vsa::Scene scene;
  const vsa::Node node = scene["nosuch"];
  const vsa::Input input = node["nosuch"];
  EXPECT_REFUSED(node.set("x", 1), Missing);
  EXPECT_REFUSED(node.add("x").status, Missing);
  EXPECT_REFUSED(node.remove("x"), Missing);
  EXPECT_REFUSED(input.set(1), Missing);
  EXPECT_REFUSED(input.set("x", 1), Missing);
  EXPECT_REFUSED(input.setBufferBytes(ElementType::Float, {}), Missing);
  EXPECT_REFUSED(input.setBuffer(ElementType::Float, 0, nullptr), Missing);
  EXPECT_REFUSED(input.clear(), Missing);
  EXPECT_REFUSED(input.refer(node), Missing);
  EXPECT_REFUSED(input.referToNone(), Missing);
  EXPECT_REFUSED(input.connect(node, "out"), Missing);
  EXPECT_REFUSED(input.disconnect(), Missing);
  EXPECT_REFUSED(input.makeArray(ValueType::Int), Missing);
  EXPECT_REFUSED(input.append().status, Missing);
  EXPECT_REFUSED(input.append(1), Missing);
  EXPECT_REFUSED(input.resize(3), Missing);
  EXPECT_REFUSED(input.makeObject(), Missing);
  EXPECT_REFUSED(input.add("x").status, Missing);
  EXPECT_REFUSED(input.remove("x"), Missing);
  EXPECT_REFUSED(scene.removeNode(node), Missing);
  EXPECT_FALSE(input[0]);
  EXPECT_FALSE(input["x"]);
  // The scene refuses to add a node with this name and returns an empty node. Every change of the
  // empty node is refused, too.
  EXPECT_REFUSED(scene.addNode("lamp", "not a name").add("x").set(1), Missing);
}

TEST(Edit, RefusesNullNames) {
  vsa::Scene scene;
  const char* const null = nullptr;
  const vsa::Node sun = scene.addNode("lamp", "sun");
  const vsa::Input input = sun.add("frame");
  EXPECT_REFUSED(scene.addNode(null, "x").status, BadName);
  EXPECT_REFUSED(scene.addNode("lamp", null).status, BadName);
  EXPECT_FALSE(scene[null]);
  EXPECT_FALSE(sun[null]);
  EXPECT_FALSE(input[null]);
  EXPECT_REFUSED(sun.add(null).status, BadName);
  EXPECT_REFUSED(sun.set(null, 1), BadName);
  EXPECT_REFUSED(sun.remove(null), Missing);
  EXPECT_REFUSED(input.add(null).status, BadName);
  EXPECT_REFUSED(input.set(null, 1), BadName);
  EXPECT_REFUSED(input.remove(null), Missing);
  EXPECT_REFUSED(input.connect(sun, null), BadName);
  EXPECT_DONE(scene.setFileTime(null));
  EXPECT_DONE(scene.addComment(null));
  EXPECT_FALSE(vsa::isName(null));
}

TEST(Edit, RefusesWhatDoesNotFitThePlace) {
  vsa::Scene scene = sceneOf("rig r: .k[0] = 1; .x = 1; .l[0] = r;");
  vsa::Scene other = sceneOf("rig r;");
  const vsa::Node r = scene["r"];
  EXPECT_REFUSED(scene.addNode("rig", "r").status, NameTaken);
  EXPECT_REFUSED(r["x"].append(1), NotAnArray);
  EXPECT_REFUSED(r["x"].resize(1), NotAnArray);
  EXPECT_REFUSED(r["x"].add("y").status, NotAnObject);
  EXPECT_REFUSED(r["x"].remove("y"), Missing);
  EXPECT_REFUSED(r["k"].append(1.5), OtherElementType);
  EXPECT_EQ(r["k"].elements().size(), 1U);
  EXPECT_REFUSED(r["k"][0].set("text"), OtherElementType);
  EXPECT_REFUSED(r["k"][0].clear(), OtherElementType);
  EXPECT_REFUSED(r["k"][0].refer(r), OtherElementType);
  EXPECT_REFUSED(r["l"][0].set(1), OtherElementType);
  EXPECT_DONE(r["l"][0].clear());
  EXPECT_REFUSED(r["x"].refer(other["r"]), OtherScene);
  EXPECT_REFUSED(r["x"].connect(other["r"], "out"), OtherScene);
  EXPECT_REFUSED(scene.removeNode(other["r"]), OtherScene);
  EXPECT_REFUSED(r["x"].makeArray(ValueType::Node), BadElementType);
  EXPECT_REFUSED(r["x"].makeArray(ValueType(99)), BadElementType);
  EXPECT_REFUSED(r["x"].makeArray(ValueType(-1)), BadElementType);
  EXPECT_REFUSED(r["x"].appendBufferBytes(ElementType::Byte, {}), NotAnArray);
  EXPECT_REFUSED(r["x"].appendBuffer(ElementType::Byte, 0, nullptr), NotAnArray);
  EXPECT_REFUSED(r["k"].appendBufferBytes(ElementType::Byte, {}), OtherElementType);
  EXPECT_REFUSED(r["k"].appendBuffer(ElementType::Byte, 0, nullptr), OtherElementType);
  EXPECT_EQ(r["k"].elements().size(), 1U);
  EXPECT_EQ(r["x"].integer(), 1);
}

TEST(Edit, KeepsTheTypesThatAreDeclared) {
  using zn::korvo_sdk::AttrType, zn::korvo_sdk::DataType;
  zn::korvo_sdk::registerNodeType(
      {.name = "editedLamp",
       .inputs = {{.name = "power", .type = AttrType::Real},
                  {.name = "stops", .type = AttrType::Array, .elementType = AttrType::Int},
                  {.name = "free"},
                  {.name = "group"},
                  {.name = "any", .type = AttrType::Buffer},
                  {.name = "profile", .type = AttrType::Buffer, .bufferType = DataType::Float},
                  {.name = "filter", .type = AttrType::Rgba, .refusesValues = true}},
       .outputs = {"out"},
       .formerInputs = {{.former = "intensity", .current = "power"}},
       .formerOutputs = {{.former = "color", .current = "out"}}});
  vsa::Scene scene;
  const vsa::Node sun = scene.addNode("editedLamp", "sun");
  EXPECT_DONE(sun.set("power", 2.0));
  EXPECT_REFUSED(sun.set("power", "text"), DeclaredType);
  EXPECT_REFUSED(sun["power"].clear(), DeclaredType);
  EXPECT_REFUSED(sun["power"].refer(sun), DeclaredType);
  EXPECT_REFUSED(sun.set("nosuch", 1), NotDeclared);
  EXPECT_REFUSED(sun.set("intensity", 1.0), FormerName);
  EXPECT_REFUSED(sun.set("filter", vsa::rgba(1, 1, 1)), TakesNoValue);
  EXPECT_DONE(sun.add("filter").connect(sun, "out"));
  EXPECT_REFUSED(sun["filter"].connect(sun, "other"), NotDeclared);
  EXPECT_REFUSED(sun["filter"].connect(sun, "color"), FormerName);
  EXPECT_DONE(sun.add("stops").append(1));
  EXPECT_REFUSED(sun["stops"].makeArray(ValueType::Real), DeclaredType);
  EXPECT_DONE(sun["stops"].makeArray(ValueType::Int));
  EXPECT_REFUSED(sun.set("free", 1), DeclaredType);
  EXPECT_DONE(sun.add("free").refer(sun));
  EXPECT_REFUSED(sun.add("group").makeObject(), DeclaredType);
  EXPECT_REFUSED(sun["power"].makeObject(), DeclaredType);
  EXPECT_DONE(sun.add("any").setBuffer(ElementType::Double, std::array{1.0}));
  EXPECT_REFUSED(sun.add("profile").setBuffer(ElementType::Double, std::array{1.0}), DeclaredType);
  EXPECT_DONE(sun["profile"].setBuffer(ElementType::Float, std::array{1.0F}));
  EXPECT_DONE(sun.remove("power"));
  EXPECT_DONE(sun.set("power", 3.0));
  zn::korvo_sdk::unregisterNodeType("editedLamp");
}

// A declared input of type Null is an object as long as it has members. No text can make it an
// empty object.
TEST(Edit, MakesADeclaredInputAnObjectByItsMembers) {
  using zn::korvo_sdk::AttrType;
  zn::korvo_sdk::registerNodeType(
      {.name = "groupedLamp",
       .inputs = {{.name = "group"}, {.name = "whole", .type = AttrType::Object}}});
  vsa::Scene scene;
  const vsa::Node sun = scene.addNode("groupedLamp", "sun");
  EXPECT_REFUSED(sun.add("group").makeObject(), DeclaredType);
  EXPECT_DONE(sun["group"].set("x", 1));
  EXPECT_DONE(sun["group"].set("y", 2));
  EXPECT_EQ(sun["group"].type(), ValueType::Object);
  EXPECT_REFUSED(sun["group"].makeObject(), DeclaredType);
  EXPECT_EQ(sun["group"].members().size(), 2U);
  EXPECT_EQ(vsa::writeText(scene).text, "groupedLamp sun:\n  .group.x = 1;\n  .group.y = 2;\n");
  EXPECT_DONE(sun["group"].remove("x"));
  EXPECT_EQ(sun["group"].type(), ValueType::Object);
  EXPECT_DONE(sun["group"].remove("y"));
  EXPECT_EQ(sun["group"].type(), ValueType::Null);
  EXPECT_DONE(sun.add("whole").makeObject());
  EXPECT_DONE(sun["whole"].set("x", 1));
  EXPECT_DONE(sun["whole"].makeObject());
  EXPECT_EQ(sun["whole"].type(), ValueType::Object);
  EXPECT_TRUE(vsa::writeText(scene).isWritten());
  zn::korvo_sdk::unregisterNodeType("groupedLamp");
}

// If a value is refused, an input that was created for it is removed. An input that existed before
// remains.
TEST(Edit, LeavesNoInputBehindARefusedValue) {
  zn::korvo_sdk::registerNodeType(
      {.name = "refusingLamp",
       .inputs = {{.name = "power", .type = ValueType::Real}, {.name = "group"}}});
  vsa::Scene scene;
  const vsa::Node sun = scene.addNode("refusingLamp", "sun");
  constexpr double INF = std::numeric_limits<double>::infinity();
  EXPECT_REFUSED(sun.set("power", INF), PlusInfinity);
  EXPECT_REFUSED(sun.set("power", "text"), DeclaredType);
  EXPECT_TRUE(sun.inputs().empty());
  EXPECT_DONE(sun.set("power", 1.5));
  EXPECT_REFUSED(sun.set("power", "text"), DeclaredType);
  EXPECT_EQ(sun["power"].real(), 1.5);
  EXPECT_DONE(sun.add("group").set("y", 1));
  EXPECT_DONE(sun["group"].remove("y"));
  EXPECT_REFUSED(sun["group"].set("x", INF), PlusInfinity);
  EXPECT_TRUE(sun["group"].members().empty());
  zn::korvo_sdk::unregisterNodeType("refusingLamp");
}

TEST(Edit, TakesTextsThatAreNullOrLong) {
  vsa::Scene scene = sceneOf("rig r: .s = \"" + std::string(100000, 's') + "\";");
  const vsa::Node r = scene["r"];
  const char* const null = nullptr;
  EXPECT_DONE(r.set("t", null));
  EXPECT_EQ(r["t"].string(), "");
  EXPECT_DONE(r["s"].clear());
  EXPECT_EQ(r["s"].type(), ValueType::Null);
}

TEST(Edit, MakesTuplesOfAsManyNumbersAsTheTypeHas) {
  constexpr std::array NUMBERS = {1.0, 2.0, 3.0};
  EXPECT_TRUE(vsa::Tuple::of(ValueType::Vec3, NUMBERS));
  EXPECT_FALSE(vsa::Tuple::of(ValueType::Vec2, NUMBERS));
  EXPECT_FALSE(vsa::Tuple::of(ValueType::Int, {}));
}

// Removing does nothing if the argument is null, belongs to another parent, or is already removed.
// Truncating does nothing to an input that is no array.
TEST(Edit, RemovesFromThePlainSceneWhatIsInIt) {
  vsa::Scene scene = sceneOf("rig r: .o.x = 1; .p.x = 2; .n = 3; rig s: .n = 4;");
  zn::korvo_sdk::Node& r = *scene.plain().findNode("r");
  zn::korvo_sdk::Node& s = *scene.plain().findNode("s");
  zn::korvo_sdk::Input& o = *r.inputNamed("o");
  zn::korvo_sdk::Input& n = *r.inputNamed("n");
  const std::string before = dumpOf(scene);
  n.truncate(0);
  o.removeMember(nullptr);
  o.removeMember(r.inputNamed("p")->memberNamed("x"));
  n.removeMember(o.memberNamed("x"));
  r.removeInput(nullptr);
  r.removeInput(s.inputNamed("n"));
  EXPECT_EQ(dumpOf(scene), before);
  zn::korvo_sdk::Input* const x = o.memberNamed("x");
  for (int i = 0; i < 2; ++i) {
    o.removeMember(x);
    r.removeInput(&n);
    EXPECT_EQ(r.inputCount(), 2U);
    EXPECT_EQ(o.memberCount(), 0U);
  }
}

TEST(Edit, KeepsToTheLimitsOfTheScene) {
  vsa::Scene scene = sceneOf("rig r: .k[0] = 1; .n[0][0] = 1; .o.p = {};");
  scene.plain().setDepthLimit(2);
  EXPECT_REFUSED(scene["r"]["o"]["p"].add("q").status, TooDeep);
  EXPECT_REFUSED(scene["r"]["n"][0].append(1), TooDeep);
  EXPECT_DONE(scene["r"]["k"].append(1));
  scene.plain().setDepthLimit(0);
  EXPECT_REFUSED(scene["r"].set("x", 1), TooDeep);
  EXPECT_REFUSED(scene["r"]["k"].resize(3), TooDeep);
  EXPECT_DONE(scene["r"]["k"].resize(2));
  EXPECT_DONE(scene["r"]["k"].resize(1));
  scene.plain().setDepthLimit(2);
  // The limit of empty elements applies to elements that a text adds, and not to elements that a
  // program adds.
  scene.plain().setEmptyElementLimit(0);
  EXPECT_DONE(scene["r"]["k"].resize(1000));
  EXPECT_EQ(scene.plain().emptyElementLimit(), 0U);
  EXPECT_REFUSED(scene["r"]["k"].resize(std::uint64_t{1} << 32), TooMany);
  EXPECT_EQ(scene["r"]["k"].elements().size(), 1000U);
}

TEST(Edit, FreesTheDeepestTree) {
  vsa::Scene scene;
  scene.plain().setDepthLimit(zn::korvo_sdk::Scene::MAX_DEPTH_LIMIT);
  const vsa::Node node = scene.addNode("rig", "r");
  zn::korvo_sdk::Input* input = scene.plain().findNode("r")->createInput("o", ValueType::Null);
  while (input->level() < zn::korvo_sdk::Scene::MAX_DEPTH_LIMIT) {
    input = input->createInput("o", ValueType::Null);
  }
  const vsa::Input deepest(input);
  EXPECT_REFUSED(deepest.add("o").status, TooDeep);
  EXPECT_DONE(deepest.setBuffer(ElementType::Byte, std::vector<std::uint8_t>(100000)));
  EXPECT_DONE(node.remove("o"));
  EXPECT_REFUSED(deepest.set(1), Removed);
  EXPECT_TRUE(node.inputs().empty());
}

// A text that is read into an edited scene can use what was added, and not what was removed.
TEST(Edit, MixesWithReading) {
  vsa::Scene scene = sceneOf("rig r: .a = 1; .b = 2;");
  EXPECT_DONE(scene["r"].remove("a"));
  zn::korvo_sdk::impl::parseString(&scene.plain(), R"(with r: .a = "new"; .b = 3; .c[0] = 1;)");
  EXPECT_EQ(scene["r"]["a"].string(), "new");
  EXPECT_DONE(scene["r"]["c"].append(2));
  zn::korvo_sdk::impl::parseString(&scene.plain(), "r.c[*] = 3;");
  EXPECT_EQ(scene["r"]["c"][2].integer(), 3);
}

TEST(Edit, SaysWhatWentWrong) {
  EXPECT_STREQ(vsa::name(EditError::BadName), "bad-name");
  EXPECT_STREQ(vsa::name(EditError(200)), "unknown");
  EXPECT_STREQ(Status(EditError(200)).message(), "unknown");
  EXPECT_STREQ(Status().message(), "");
  EXPECT_STREQ(Status(EditError::NameTaken).message(), "there is a node of that name");
  EXPECT_NO_THROW(Status().orThrow());
  EXPECT_THROW(Status(EditError::BadName).orThrow(), std::invalid_argument);
  EXPECT_THROW(Status(EditError::OutOfMemory).orThrow(), std::bad_alloc);
  for (int i = 1; i <= static_cast<int>(EditError::OutOfMemory); ++i) {
    EXPECT_STRNE(vsa::name(EditError(i)), "unknown");
    EXPECT_STRNE(Status(EditError(i)).message(), "");
  }
}

}  // namespace
