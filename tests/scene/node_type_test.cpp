// Tests of declared node types: a node has only the declared inputs and outputs. Former names of
// inputs and outputs are replaced by the current names.
#include <vsa/scene/node_type.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include <vsa/scene/name_update.h>
#include "tests/support/parser_fixture.h"
#include "tests/support/text.h"

namespace zn::korvo_sdk {
namespace {

using vsa_tests::LoggedLines;
using vsa_tests::text;
using Lines = std::vector<std::string>;

InputDeclaration declared(const char* name, AttrType type) {
  InputDeclaration input;
  input.name = name;
  input.type = type;
  return input;
}

/// A fixture that declares the type "camera" while a test runs.
class DeclaredTypes : public testing::Test {
 protected:
  DeclaredTypes() {
    NodeType type;
    type.name = "camera";
    type.inputs = {declared("fov", AttrType::Real),    declared("keys", AttrType::Array),
                   declared("ids", AttrType::Buffer),  declared("any", AttrType::Buffer),
                   declared("lens", AttrType::Object), declared("mode", AttrType::String),
                   declared("film", AttrType::Real),   declared("target", AttrType::Node)};
    type.inputs[1].elementType = AttrType::Int;
    type.inputs[2].bufferType = DataType::Int32;
    type.inputs[5].enumValues = {"wide", "tele"};
    type.inputs[6].refusesValues = true;
    type.outputs = {"image", "depth"};
    type.formerInputs = {{"angle", "fov"}, {"gone", "nowhere"}, {"fov2", "angle"}};
    type.formerOutputs = {{"picture", "image"}, {"lost", "nowhere"}};
    registerNodeType(type);
    node_ = scene_.createNode("camera", "c", "");
  }
  ~DeclaredTypes() override { unregisterNodeType("camera"); }

  Lines logOf(const char* bytes, bool result = true) {
    const LoggedLines log;
    EXPECT_EQ(impl::parseString(&scene_, bytes), result) << bytes;
    return log.lines();
  }

  Scene scene_;
  Node* node_;
};

TEST_F(DeclaredTypes, IsDeclared) {
  EXPECT_TRUE(node_->isDeclared());
  EXPECT_FALSE(scene_.createNode("open", "o", "")->isDeclared());
  unregisterNodeType("camera");
  EXPECT_TRUE(node_->isDeclared());
  EXPECT_FALSE(scene_.createNode("camera", "d", "")->isDeclared());
}

TEST_F(DeclaredTypes, InputsAreCreatedByTheirFirstLookUp) {
  EXPECT_EQ(node_->inputCount(), 0U);
  EXPECT_TRUE(node_->hasInput("lens", AttrType::Null));
  EXPECT_EQ(node_->inputCount(), 1U);
  Input* const fov = node_->input("fov");
  ASSERT_NE(fov, nullptr);
  EXPECT_EQ(fov->type(), AttrType::Real);
  EXPECT_EQ(node_->inputAt(0)->type(), AttrType::Object);
  EXPECT_EQ(node_->inputAt(1), fov);
  EXPECT_EQ(node_->input("fov"), fov);
  EXPECT_EQ(node_->createInput("fov", AttrType::Real), fov);
  EXPECT_EQ(node_->createInput("fov", AttrType::Int), nullptr);
  EXPECT_EQ(node_->createInput("target", AttrType::Node), node_->input("target"));
  EXPECT_EQ(node_->createArray("keys", AttrType::Int), node_->input("keys"));
}

TEST_F(DeclaredTypes, WithTheirTypes) {
  EXPECT_TRUE(node_->hasInput("fov", AttrType::Real));
  EXPECT_FALSE(node_->hasInput("fov", AttrType::Int));
  EXPECT_EQ(node_->input("keys")->elementType(), AttrType::Int);
  EXPECT_EQ(node_->input("ids")->bufferType(), DataType::Int32);
  EXPECT_EQ(node_->input("any")->bufferType(), DataType::Null);
  EXPECT_TRUE(node_->input("film")->refusesValues());
  EXPECT_FALSE(node_->input("fov")->refusesValues());
  const interfaces::IEnumeration* const modes = node_->input("mode")->enumValues();
  ASSERT_NE(modes, nullptr);
  EXPECT_FALSE(modes->isEmpty());
  EXPECT_NE(modes->find("wide"), nullptr);
  EXPECT_EQ(modes->find("Wide"), nullptr);
  EXPECT_EQ(modes->find(""), nullptr);
}

TEST_F(DeclaredTypes, AreClosed) {
  EXPECT_FALSE(node_->hasInput("zoom", AttrType::Null));
  EXPECT_EQ(node_->input("zoom"), nullptr);
  EXPECT_EQ(node_->createInput("zoom", AttrType::Real), nullptr);
  EXPECT_EQ(node_->createArray("zoom", AttrType::Real), nullptr);
  EXPECT_EQ(node_->output("sound"), nullptr);
  EXPECT_NE(node_->output("image"), nullptr);
  EXPECT_EQ(node_->output("image"), node_->output("image"));
  EXPECT_EQ(node_->inputCount(), 0U);
  EXPECT_EQ(logOf("c.zoom = 1;", false),
            Lines{"error: PARSE ERROR (1,11): input 'c.zoom' not found.."});
  EXPECT_EQ(logOf("c.fov |= c.sound;"),
            Lines{"warning: Cannot connect nonexistent output c.sound to c.fov."});
}

TEST_F(DeclaredTypes, MembersOfADeclaredObjectAreOpen) {
  EXPECT_EQ(logOf("c.lens.fstop = 2.8;"), Lines{});
  EXPECT_EQ(node_->input("lens")->input("fstop")->real(), 2.8);
}

TEST_F(DeclaredTypes, FormerNames) {
  EXPECT_EQ(text(updateInputName("camera", "angle")), "fov");
  EXPECT_EQ(text(updateInputName("camera", "fov")), "fov");
  // "fov2" is a former name of "angle", and "angle" is a former name of "fov". Only one of the two
  // translations is made.
  EXPECT_EQ(text(updateInputName("camera", "fov2")), "angle");
  EXPECT_EQ(text(updateInputName("Camera", "angle")), "angle");
  EXPECT_EQ(text(updateInputName("camera", "picture")), "picture");
  EXPECT_EQ(text(updateOutputName("camera", "picture")), "image");
  EXPECT_EQ(text(updateOutputName("camera", "angle")), "angle");
  EXPECT_EQ(text(updateOutputName("nobody", "picture")), "picture");
  EXPECT_EQ(logOf("c.angle = 45.0; c.target |= c.picture;"), Lines{});
  EXPECT_EQ(node_->input("fov")->real(), 45.0);
  EXPECT_EQ(node_->input("target")->connection(), node_->output("image"));
  EXPECT_EQ(logOf("c.gone = 1;", false),
            Lines{"error: PARSE ERROR (1,11): input 'c.gone' not found.."});
  EXPECT_EQ(logOf("c.fov |= c.lost;"),
            Lines{"warning: Cannot connect nonexistent output c.lost to c.fov."});
}

TEST_F(DeclaredTypes, ValuesThatTheDeclarationConverts) {
  EXPECT_EQ(logOf("c.fov = 45;"), Lines{});
  EXPECT_EQ(node_->input("fov")->real(), 45.0);
  EXPECT_EQ(logOf("c.ids = float[1] {1};"),
            Lines{"error: TYPE ERROR (1,21): expected Buffer @ c.ids but found Float."});
  EXPECT_EQ(logOf("c.ids = int32[1] {1}; c.any = float[1] {1};"), Lines{});
  EXPECT_EQ(node_->input("ids")->buffer().count, 1U);
  EXPECT_EQ(logOf("c.keys[0] = 2.5;", false),
            Lines{"error: TYPE ERROR (1,16): cannot assign Real to Array @ c.keys."});
}

TEST_F(DeclaredTypes, EnumerationsThroughAText) {
  EXPECT_EQ(logOf("c.mode = \"wide\";"), Lines{});
  EXPECT_EQ(
      logOf("c.mode = \"fish\";"),
      Lines{"warning: ENUM WARNING (1,16): setting non-existent enum value 'fish' @ c.mode."});
  EXPECT_STREQ(node_->input("mode")->string(), "fish");
}

TEST_F(DeclaredTypes, InputsThatRefuseValuesTakeLinks) {
  EXPECT_EQ(logOf("c.film = 2.5;"),
            Lines{"error: TYPE ERROR (1,13): expected Real @ c.film but found 2.5."});
  EXPECT_EQ(node_->input("film")->real(), 0.0);
  EXPECT_EQ(logOf("c.film |= c.depth;"), Lines{});
  EXPECT_EQ(node_->input("film")->connection(), node_->output("depth"));
}

TEST_F(DeclaredTypes, NodesKeepTheDeclarationOfTheirCreation) {
  NodeType changed;
  changed.name = "camera";
  changed.inputs = {declared("zoom", AttrType::Int)};
  registerNodeType(changed);
  EXPECT_EQ(node_->input("zoom"), nullptr);
  EXPECT_NE(node_->input("fov"), nullptr);
  Node* const other = scene_.createNode("camera", "d", "");
  EXPECT_EQ(other->input("fov"), nullptr);
  EXPECT_NE(other->input("zoom"), nullptr);
  unregisterNodeType("camera");
  unregisterNodeType("camera");
  EXPECT_NE(node_->input("fov"), nullptr);
  EXPECT_NE(scene_.createNode("camera", "e", "")->createInput("own", AttrType::Int), nullptr);
}

TEST_F(DeclaredTypes, AreUsedFromSeveralThreads) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([i] {
      NodeType changed;
      changed.name = "camera";
      changed.outputs = {"image"};
      for (int k = 0; k < 500; ++k) {
        if (i == 0) registerNodeType(changed);
        Scene scene;
        Node* const node = scene.createNode("camera", "c", "");
        EXPECT_NE(node->output("image"), nullptr);
        updateInputName("camera", "angle");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST_F(DeclaredTypes, DefinedNodesOfADeclaredTypeAreClosedToo) {
  EXPECT_EQ(logOf("define camera; camera.fov = 1.5;"), Lines{});
  EXPECT_EQ(scene_.findNode("camera")->input("zoom"), nullptr);
}

// --- declarations without a type ---

/// A fixture with a node of the declared type "rig". It has an input without a type, an array
/// without an element type, and an array of buffers of any type.
class DeclaredUntyped : public testing::Test {
 protected:
  DeclaredUntyped() {
    NodeType type;
    type.name = "rig";
    type.inputs = {declared("free", AttrType::Null), declared("list", AttrType::Array),
                   declared("sets", AttrType::Array)};
    type.inputs[2].elementType = AttrType::Buffer;
    type.outputs = {"out"};
    registerNodeType(type);
    node_ = scene_.createNode("rig", "r", "");
  }
  ~DeclaredUntyped() override { unregisterNodeType("rig"); }

  Lines logOf(const char* bytes, bool result = true) {
    const LoggedLines log;
    EXPECT_EQ(impl::parseString(&scene_, bytes), result) << bytes;
    return log.lines();
  }

  Scene scene_;
  Node* node_;
};

TEST_F(DeclaredUntyped, AnInputTakesNoPlainValue) {
  EXPECT_EQ(logOf("r.free = 1; r.free = \"x\"; r.free = float[1]{1}; r.free = {};"),
            (Lines{"error: TYPE ERROR (1,11): expected Null @ r.free but found Int.",
                   "error: TYPE ERROR (1,25): expected Null @ r.free but found String.",
                   "error: TYPE ERROR (1,47): expected Null @ r.free but found Buffer.",
                   "error: TYPE ERROR (1,60): expected Null @ r.free but found Object."}));
  EXPECT_EQ(node_->input("free")->type(), AttrType::Null);
}

TEST_F(DeclaredUntyped, AnInputTakesNoIndex) {
  EXPECT_EQ(logOf("r.free[0] = 1;", false),
            Lines{"error: PARSE ERROR (1,14): input 'r.free[0]' not found.."});
  EXPECT_EQ(node_->input("free")->type(), AttrType::Null);
}

TEST_F(DeclaredUntyped, AnInputBecomesAnObjectByAMember) {
  EXPECT_EQ(logOf("r.free.x = 1; r.free.y = 2.5;"), Lines{});
  EXPECT_EQ(node_->input("free")->type(), AttrType::Object);
  EXPECT_EQ(node_->input("free")->input("x")->integer(), 1);
  EXPECT_EQ(node_->input("free")->memberCount(), 2U);
}

TEST_F(DeclaredUntyped, AnInputBecomesANodeByAReference) {
  EXPECT_EQ(logOf("r.free = r;"), Lines{});
  EXPECT_EQ(node_->input("free")->type(), AttrType::Node);
  EXPECT_EQ(node_->input("free")->node(), node_);
}

TEST_F(DeclaredUntyped, AConnectionLeavesAnInputWithoutAType) {
  EXPECT_EQ(logOf("r.free |= r.out;"), Lines{});
  EXPECT_EQ(node_->input("free")->type(), AttrType::Null);
  EXPECT_EQ(node_->input("free")->connection(), node_->output("out"));
}

TEST_F(DeclaredUntyped, AnArrayTakesLinksOnly) {
  EXPECT_EQ(logOf("r.list[0] = 1;", false),
            Lines{"error: TYPE ERROR (1,14): cannot assign Int to Array @ r.list."});
  EXPECT_EQ(logOf("r.list[0].x = 1;", false),
            Lines{"error: TYPE ERROR (1,16): cannot assign Object to Array @ r.list."});
  EXPECT_EQ(node_->input("list")->count(), 0U);
  EXPECT_EQ(logOf("r.list[1] = r; r.list[0] |= r.out;"), Lines{});
  EXPECT_EQ(node_->input("list")->elementType(), AttrType::Null);
  EXPECT_EQ(node_->input("list")->element(1)->node(), node_);
}

TEST_F(DeclaredUntyped, EmptyElementsOfAnArrayOfBuffersGetAType) {
  EXPECT_EQ(logOf("r.sets[2] = float[1] {1.5};"), Lines{});
  Input* const sets = node_->input("sets");
  ASSERT_EQ(sets->count(), 3U);
  for (std::uint64_t i = 0; i < 3; ++i) {
    EXPECT_EQ(sets->element(i)->bufferType(), DataType::Float) << i;
  }
  EXPECT_EQ(sets->element(0)->buffer().count, 0U);
  EXPECT_EQ(sets->element(2)->buffer().count, 1U);
  EXPECT_EQ(logOf("r.sets[0] = int32[1] {1};"),
            Lines{"error: TYPE ERROR (1,25): expected Buffer @ r.sets[0] but found Int32."});
  EXPECT_EQ(logOf("r.sets[0] = 1;", false),
            Lines{"error: TYPE ERROR (1,14): cannot assign Int to Array @ r.sets."});
}

}  // namespace
}  // namespace zn::korvo_sdk
