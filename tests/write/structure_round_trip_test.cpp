// Tests that arrays, objects, links, names and headers that a program creates are read back from a
// text.
#include <gtest/gtest.h>

#include "tests/support/declared_lamp.h"
#include "tests/write/round_trip.h"
#include "tests/write/scene_builder.h"

namespace vsa_tests {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Scene;

Input& element(Input& array, std::uint64_t index) {
  while (array.count() <= index) array.appendElement();
  return static_cast<Input&>(*array.element(index));
}

TEST(StructureRoundTrip, ArraysOfValuesAndObjects) {
  SceneBuilder made;
  for (const AttrType type : {AttrType::Null, AttrType::Bool, AttrType::Int, AttrType::UInt,
                              AttrType::Real, AttrType::Vec2, AttrType::Vec3, AttrType::Vec4,
                              AttrType::Pos2, AttrType::Pos3, AttrType::Quat, AttrType::Rgba,
                              AttrType::Mat3, AttrType::Mat4, AttrType::String, AttrType::Object}) {
    const std::string name = std::string("in") + zn::korvo_sdk::attrTypeName(type);
    element(made.array(name.c_str(), type), 2);
  }
  expectCarried(made.scene);
}

TEST(StructureRoundTrip, ArrayOfBuffersWithTypesOfTheirOwn) {
  SceneBuilder made;
  Input& array = made.array("x", AttrType::Buffer);
  SceneBuilder::setBuffer(element(array, 0), DataType::Float, std::vector<float>{1, 2});
  SceneBuilder::setBuffer(element(array, 1), DataType::Rgb8, std::vector<unsigned char>{1, 2, 3});
  SceneBuilder::setBuffer(element(array, 2), DataType::Int32, std::vector<int>{});
  element(array, 3);  // without a type, like the element of a link
  expectCarried(made.scene);
}

TEST(StructureRoundTrip, EmptyArraysBeforeAFullOneAreReadWithoutAMessage) {
  Scene scene;
  ASSERT_TRUE(readInto(scene, "thing n: .x[3][1] = 5; .y[2][0].a[1] = 1.5;").log.empty());
  expectCarried(scene);
}

// An empty array with a link needs its own statements, which come before the statements of the full
// array.
TEST(StructureRoundTrip, LinkedEmptyArrayBeforeAFullOne) {
  SceneBuilder made;
  Input& arrays = made.array("x", AttrType::Array);
  element(arrays, 1);
  Input& full = element(arrays, 1);
  zn::korvo_sdk::AttrData integers;
  integers.type = AttrType::Array;
  integers.elementType = static_cast<int>(AttrType::Int);
  full.set(integers);
  SceneBuilder::setInteger(element(full, 0), 5);
  EXPECT_EQ(vsa::writeText(made.scene).text, "thing n:\n  .x[1][0] = 5;\n");
  element(arrays, 0).connect(made.n.output("out"));
  const std::string text = vsa::writeText(made.scene).text;
  EXPECT_EQ(text, "thing n:\n  .x[0] = [];\n  .x[0] |= n.out;\n  .x[1][0] = 5;\n");
  Scene again;
  EXPECT_EQ(readInto(again, text).log.size(), 1u);
  EXPECT_EQ(dumpOf(made.scene), dumpOf(again));
}

// The link does not create the empty array before it.
TEST(StructureRoundTrip, LinkedEmptyArrayBehindAnEmptyOne) {
  SceneBuilder made;
  Input& arrays = made.array("x", AttrType::Array);
  element(arrays, 1).connect(made.n.output("out"));
  const std::string text = vsa::writeText(made.scene).text;
  EXPECT_EQ(text, "thing n:\n  .x[0] = [];\n  .x[1] |= n.out;\n");
  Scene again;
  EXPECT_EQ(readInto(again, text).log.size(), 1u);
  EXPECT_EQ(dumpOf(made.scene), dumpOf(again));
}

TEST(StructureRoundTrip, EmptyArraysAreReadWithTheirMessage) {
  Scene scene, again;
  static_cast<void>(readInto(scene, "thing n: .x = [1]; .y[1] = [];"));
  const vsa::TextResult written = vsa::writeText(scene);
  EXPECT_EQ(written.text, "thing n:\n  .x = [];\n  .y[0] = [];\n  .y[1] |= null;\n");
  EXPECT_EQ(readInto(again, written.text).log.size(), 2u);
  EXPECT_EQ(dumpOf(scene), dumpOf(again));
}

TEST(StructureRoundTrip, ObjectsInObjectsInArrays) {
  SceneBuilder made;
  Input& outer = made.input("o", AttrType::Object);
  Input& inner = static_cast<Input&>(*outer.createInput("inner", AttrType::Object));
  inner.createInput("empty", AttrType::Object);
  inner.createInput("none", AttrType::Null);
  Input& keys = static_cast<Input&>(*inner.createArray("keys", AttrType::Object));
  element(keys, 1).createInput("time", AttrType::Real);
  SceneBuilder::setReal(static_cast<Input&>(*outer.createInput("last", AttrType::Real)), 2.5);
  expectCarried(made.scene);
}

TEST(StructureRoundTrip, LinksInEveryPlace) {
  Scene scene;
  ASSERT_TRUE(readInto(scene,
                       "thing a; thing n: .c |= a.out; .v = 1.0; .v |= n.out; .r = a; .none = null;"
                       ".r |= a.o2; .o.m |= a.out; .o.r = n; .l[1] |= a.out; .l[0] = n;"
                       ".k[0] = 2.5; .k[0] |= a.out; .k |= a.out; .o |= a.out; .e = {};"
                       ".e |= a.out; .b = float[1] {1}; .b |= a.out; .later = z; thing z;")
                  .log.empty());
  vsa::WriteOptions last, full;
  last.links = vsa::LinkPlace::Last;
  full.paths = vsa::PathForm::Full;
  for (const vsa::WriteOptions& options : {vsa::WriteOptions(), last, full}) {
    expectCarried(scene, options);
  }
}

TEST(StructureRoundTrip, NamesThatLookLikeKeywords) {
  SceneBuilder made;
  for (const char* const name : {"remove", "define", "with", "vec3", "float", "inf", "nan", "_",
                                 "a1", "Truex", "\xC3\xA9", "\x80", "REMOVE", "e5", "u"}) {
    Node& node = made.node(name, name);
    node.createInput(name, AttrType::Int);
    static_cast<Input&>(*made.n.createInput(name, AttrType::Node)).setNode(&node);
    Input& connected = static_cast<Input&>(*node.createInput("c", AttrType::Null));
    connected.connect(node.output(name));
  }
  for (const vsa::PathForm form : {vsa::PathForm::Block, vsa::PathForm::Full}) {
    vsa::WriteOptions options;
    options.paths = form;
    expectCarried(made.scene, options);
  }
}

TEST(StructureRoundTrip, StatementWordsAsTypesOfNodesWithoutInputs) {
  SceneBuilder made;
  made.node("remove", "n1");
  made.node("Define", "n2");
  made.node("with", "n3");
  expectCarried(made.scene);
}

TEST(StructureRoundTrip, TypeThatBeginsLikeAByteOrderMark) {
  Scene scene, again;
  scene.createNode("\xEF\xBB\xBFtype", "n", "");
  const std::string text = vsa::writeText(scene).text;
  EXPECT_FALSE(text.starts_with("\xEF\xBB\xBF"));
  ASSERT_TRUE(readInto(again, text).result);
  EXPECT_EQ(again.nodeAt(0)->type(), "\xEF\xBB\xBFtype");
}

TEST(StructureRoundTrip, DeclaredInputsAreFoundAsTheyAre) {
  declareLamp();
  SceneBuilder made;
  Node& lamp = made.node("declaredLamp", "lamp1");
  for (const char* const name : {"samples", "keys", "filter", "shape", "power"}) {
    lamp.input(name);
  }
  static_cast<Input*>(lamp.input("filter"))->connect(lamp.output("outColor"));
  SceneBuilder::setString(static_cast<Input&>(*lamp.input("shape")), "spot");
  expectCarried(made.scene);
}

/// A declared type. The destructor removes it.
class DeclaredHolder {
 public:
  DeclaredHolder() {
    using zn::korvo_sdk::NodeType;
    NodeType type;
    type.name = "holder";
    type.inputs = {{.name = "rows", .type = AttrType::Array, .elementType = AttrType::Array},
                   {.name = "power", .type = AttrType::Real}};
    type.outputs = {"out"};
    type.formerInputs = {{"power", "power"}};
    type.formerOutputs = {{"out", "out"}};
    zn::korvo_sdk::registerNodeType(type);
  }
  DeclaredHolder(const DeclaredHolder&) = delete;
  DeclaredHolder& operator=(const DeclaredHolder&) = delete;
  ~DeclaredHolder() { zn::korvo_sdk::unregisterNodeType("holder"); }
};

TEST(StructureRoundTrip, DeclaredArrayOfArrays) {
  const DeclaredHolder declared;
  Scene scene;
  ASSERT_TRUE(readInto(scene, "holder h: .rows[0][1] = 5; .rows[2][0] = 1.5;").log.empty());
  expectCarried(scene);
}

TEST(StructureRoundTrip, FormerNameThatIsTheCurrentOne) {
  const DeclaredHolder declared;
  Scene scene;
  ASSERT_TRUE(readInto(scene, "holder h: .power = 5.0; thing n: .x |= h.out;").log.empty());
  expectCarried(scene);
}

TEST(StructureRoundTrip, HeaderIsCompleted) {
  SceneBuilder made;
  made.scene.setFileVersion(18446744073709551615u);
  made.scene.setFileTime("12:30, noon");
  EXPECT_EQ(vsa::writeText(made.scene).text,
            "# version: 18446744073709551615\n# time: 12:30, noon\nthing n;\n");
  made.scene.pushFileComment("# version: 7");
  made.scene.pushFileComment("# time: never");
  made.scene.pushFileComment("#");
  const std::string text = vsa::writeText(made.scene).text;
  EXPECT_EQ(text,
            "# version: 7\n# time: never\n#\n# version: 18446744073709551615\n"
            "# time: 12:30, noon\nthing n;\n");
  Scene again;
  ASSERT_TRUE(readInto(again, text).result);
  EXPECT_EQ(again.fileVersion(), made.scene.fileVersion());
  EXPECT_EQ(again.fileTime(), made.scene.fileTime());
  EXPECT_EQ(vsa::writeText(again).text, text);
}

}  // namespace

}  // namespace vsa_tests
