// Tests of the limits of a scene: the number of its empty elements, the number of elements of an
// array, and the nesting depth of inputs.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "scene/model/scene_limits.h"
#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk {
namespace {

using vsa_tests::LoggedLines;
using vsa_tests::thrownBy;
using Lines = std::vector<std::string>;

AttrData ofType(AttrType type) {
  AttrData data;
  data.type = type;
  return data;
}

/// A scene with a limit of 3 empty elements, and an array in it.
class EmptyElements : public testing::Test {
 protected:
  EmptyElements() {
    node_ = scene_.createNode("open", "n", "");
    array_ = node_->createArray("a", AttrType::Null);
    scene_.setEmptyElementLimit(3);
  }

  void fill() {
    for (int i = 0; i < 3; ++i) array_->appendElement();
  }

  std::string append(Input* array) {
    return thrownBy([&] { array->appendElement(); });
  }

  Scene scene_;
  Node* node_;
  Input* array_;
  static constexpr const char* FULL =
      "array n.a cannot grow past the scene's limit of 3 empty elements";
};

TEST_F(EmptyElements, OneMoreThanTheLimitIsRefused) {
  fill();
  EXPECT_EQ(append(array_), FULL);
  EXPECT_EQ(array_->count(), 3U);
}

TEST_F(EmptyElements, TheLimitIsThatOfTheWholeScene) {
  fill();
  Input* const other = scene_.createNode("open", "m", "")->createArray("b", AttrType::Int);
  EXPECT_EQ(append(other), "array m.b cannot grow past the scene's limit of 3 empty elements");
  EXPECT_EQ(other->count(), 0U);
}

TEST_F(EmptyElements, ElementsOfRemovedNodesStillCount) {
  fill();
  scene_.removeNode("n");
  Input* const other = scene_.createNode("open", "m", "")->createArray("b", AttrType::Int);
  EXPECT_NE(append(other), "");
}

using Use = void (*)(Scene&, Input*);

struct UseRow {
  const char* name;
  Use use;
};

// Each of these calls makes an empty element used, so that one more element can be appended.
TEST_F(EmptyElements, CallsThatCountAsUse) {
  const UseRow rows[] = {
      {"assign", [](Scene&, Input* element) { element->assign(ofType(AttrType::Int)); }},
      {"assign of an object",
       [](Scene&, Input* element) { element->assign(ofType(AttrType::Object)); }},
      {"connect",
       [](Scene& scene, Input* element) { element->connect(scene.findNode("n")->output("o")); }},
      {"disconnect", [](Scene&, Input* element) { element->disconnect(); }},
      {"setNode", [](Scene&, Input* element) { element->setNode(nullptr); }},
      {"retain", [](Scene&, Input* element) { element->retain(); }},
      {"createInput", [](Scene&, Input* element) { element->createInput("x", AttrType::Int); }},
      {"createArray", [](Scene&, Input* element) { element->createArray("x", AttrType::Int); }},
  };
  for (const UseRow& row : rows) {
    SCOPED_TRACE(row.name);
    Scene scene;
    scene.setEmptyElementLimit(3);
    Input* const array = scene.createNode("open", "n", "")->createArray("a", AttrType::Null);
    for (int i = 0; i < 3; ++i) array->appendElement();
    row.use(scene, array->element(1));
    row.use(scene, array->element(1));  // a second use does not count
    EXPECT_EQ(append(array), "");
    EXPECT_EQ(append(array), FULL);
  }
}

TEST_F(EmptyElements, AppendingToAnElementMakesItUsed) {
  fill();
  array_->element(0)->set(ofType(AttrType::Array));
  // The limit is checked before the element is appended. At that time, the inner array itself still
  // counts as one of the 3 empty elements. Therefore its first element is refused.
  EXPECT_EQ(append(array_->element(0)),
            "array n.a[0] cannot grow past the scene's limit of 3 empty elements");
  array_->element(1)->retain();
  EXPECT_EQ(append(array_->element(0)), "");
  EXPECT_EQ(append(array_), "");
  EXPECT_EQ(append(array_), FULL);
}

TEST_F(EmptyElements, LookUpsAndSetDoNotCountAsUse) {
  fill();
  Input* const element = array_->element(0);
  element->set(ofType(AttrType::Buffer));
  EXPECT_EQ(element->type(), AttrType::Buffer);
  element->hasInput("x", AttrType::Null);
  element->input("x");
  element->path();
  element->count();
  element->element(0);
  element->release();
  EXPECT_EQ(append(array_), FULL);
}

TEST_F(EmptyElements, ARefusedMemberDoesNotCountAsUse) {
  fill();
  EXPECT_EQ(array_->element(0)->createInput("[0]", AttrType::Int), nullptr);
  EXPECT_EQ(append(array_), FULL);
}

TEST_F(EmptyElements, TheLimitMayBeSetAtAnyTime) {
  fill();
  scene_.setEmptyElementLimit(4);
  EXPECT_EQ(append(array_), "");
  scene_.setEmptyElementLimit(0);
  EXPECT_EQ(append(array_), "array n.a cannot grow past the scene's limit of 0 empty elements");
  scene_.setEmptyElementLimit(UINT64_MAX);
  EXPECT_EQ(append(array_), "");
}

TEST_F(EmptyElements, TextWithoutGapsIsNotLimited) {
  std::string bytes;
  for (int i = 0; i < 100; ++i) {
    bytes += "n.i[*] = 1; n.o[*].x = 1; n.l[*] |= n.o; n.b[*] = byte[0] {};";
  }
  const LoggedLines log;
  EXPECT_TRUE(impl::parseString(&scene_, String(bytes.c_str())));
  EXPECT_EQ(log.lines(), Lines{});
}

TEST_F(EmptyElements, TextWithGapsIsLimited) {
  const LoggedLines log;
  EXPECT_TRUE(impl::parseString(&scene_, "n.i[2] = 1;"));
  EXPECT_FALSE(impl::parseString(&scene_, "n.i[5] = 1;"));
  EXPECT_EQ(log.lines(),
            Lines{"error: array n.i cannot grow past the scene's limit of 3 empty elements"});
}

// --- depth ---

TEST(Depth, TwoHundredAndFiftySixLevels) {
  Scene scene;
  Input* input = scene.createNode("open", "n", "")->createInput("x", AttrType::Null);
  std::string path = "n.x";
  for (int level = 2; level <= 256; ++level) {
    input = input->createInput("x", AttrType::Null);
    path += ".x";
    ASSERT_EQ(input->level(), static_cast<unsigned>(level));
  }
  EXPECT_EQ(thrownBy([&] { input->createInput("y", AttrType::Int); }),
            "input " + path + ".y is nested deeper than 256 levels");
  EXPECT_EQ(thrownBy([&] { input->createArray("y", AttrType::Int); }),
            "input " + path + ".y is nested deeper than 256 levels");
  EXPECT_EQ(input->type(), AttrType::Null);
}

TEST(Depth, ElementsCountAsLevels) {
  Scene scene;
  scene.setDepthLimit(2);
  Input* const array = scene.createNode("open", "n", "")->createArray("a", AttrType::Array);
  array->appendElement();
  Input* const inner = array->element(0);
  EXPECT_EQ(thrownBy([&] { inner->appendElement(); }),
            "input n.a[0][0] is nested deeper than 2 levels");
  EXPECT_EQ(inner->count(), 0U);
}

TEST(Depth, ExistingInputsAreFound) {
  Scene scene;
  Input* const object = scene.createNode("open", "n", "")->createInput("o", AttrType::Object);
  Input* const x = object->createInput("x", AttrType::Int);
  scene.setDepthLimit(1);
  EXPECT_EQ(object->createInput("x", AttrType::Int), x);
  EXPECT_EQ(object->createInput("x", AttrType::Real), nullptr);
  EXPECT_EQ(object->createInput("[0]", AttrType::Real), nullptr);
  EXPECT_NE(thrownBy([&] { object->createInput("y", AttrType::Int); }), "");
  EXPECT_EQ(object->memberCount(), 1U);
}

TEST(Depth, IsTestedBeforeTheEmptyElements) {
  Scene scene;
  scene.setDepthLimit(1);
  scene.setEmptyElementLimit(0);
  Input* const array = scene.createNode("open", "n", "")->createArray("a", AttrType::Int);
  EXPECT_EQ(thrownBy([&] { array->appendElement(); }),
            "input n.a[0] is nested deeper than 1 levels");
  scene.setDepthLimit(2);
  EXPECT_EQ(thrownBy([&] { array->appendElement(); }),
            "array n.a cannot grow past the scene's limit of 0 empty elements");
}

// An input of a node has the level 1, which exceeds a limit of 0.
TEST(Depth, LimitOfZeroPermitsNoInput) {
  Scene scene;
  scene.setDepthLimit(0);
  Node* const node = scene.createNode("open", "n", "");
  EXPECT_EQ(thrownBy([&] { node->createInput("a", AttrType::Int); }),
            "input n.a is nested deeper than 0 levels");
  EXPECT_EQ(node->inputCount(), 0U);
}

TEST(Depth, TheLimitHasALimit) {
  Scene scene;
  scene.setDepthLimit(UINT64_MAX);
  EXPECT_EQ(scene.depthLimit(), 65535U);
  scene.setDepthLimit(65535);
  EXPECT_EQ(scene.depthLimit(), 65535U);
  scene.setDepthLimit(65534);
  EXPECT_EQ(scene.depthLimit(), 65534U);
}

TEST(Depth, EndsAText) {
  Scene scene;
  scene.setDepthLimit(3);
  const LoggedLines log;
  EXPECT_TRUE(impl::parseString(&scene, "open n; n.a.b.c = 1;"));
  EXPECT_FALSE(impl::parseString(&scene, "open n; n.a.b.d.e = 1; n.z = 1;"));
  EXPECT_EQ(log.lines(), Lines{"error: input n.a.b.d.e is nested deeper than 3 levels"});
  EXPECT_TRUE(scene.findNode("n")->input("a")->input("b")->hasInput("d", AttrType::Object));
  EXPECT_FALSE(scene.findNode("n")->hasInput("z", AttrType::Null));
}

// The test calls the check directly with a number of elements, because an array of 2^32 elements
// would take 200 GiB.
TEST(ElementCount, AnArrayHoldsUpTo32BitsOfIndices) {
  Scene scene;
  Input* const array = scene.createNode("open", "n", "")->createArray("a", AttrType::Int);
  const auto errorAt = [&](std::uint64_t count) {
    return thrownBy([&] { SceneLimits::checkElementCount(*array, count); });
  };
  EXPECT_EQ(errorAt(0), "");
  EXPECT_EQ(errorAt(4294967295U), "");
  EXPECT_EQ(errorAt(4294967296U), "array n.a cannot hold more than 4294967296 elements");
  EXPECT_EQ(errorAt(4294967297U), "array n.a cannot hold more than 4294967296 elements");
}

}  // namespace
}  // namespace zn::korvo_sdk
