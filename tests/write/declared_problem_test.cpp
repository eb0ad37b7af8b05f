// Tests of what a text cannot represent because a node's type is declared: inputs, values, links
// and former names that the declaration does not allow.
#include <gtest/gtest.h>

#include <vsa/scene/node_type.h>

#include "tests/write/round_trip.h"
#include "tests/write/scene_builder.h"
#include "write/walk/reasons.h"

namespace vsa_tests {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
namespace reasons = vsa::impl::reasons;

/// A fixture with a node `lamp` that was created before its type was declared.
class OpenThenDeclared : public testing::Test {
 protected:
  void TearDown() override { zn::korvo_sdk::unregisterNodeType("lateLamp"); }

  static void declare() {
    using zn::korvo_sdk::InputDeclaration;
    zn::korvo_sdk::NodeType type;
    type.name = "lateLamp";
    type.inputs = {{.name = "power", .type = AttrType::Real},
                   {.name = "filter", .type = AttrType::Int, .refusesValues = true},
                   {.name = "keys", .type = AttrType::Array, .elementType = AttrType::Node},
                   {.name = "none", .type = AttrType::Null},
                   {.name = "samples", .type = AttrType::Buffer, .bufferType = DataType::Float}};
    type.outputs = {"out"};
    type.formerInputs = {{"intensity", "power"}};
    type.formerOutputs = {{"color", "out"}};
    zn::korvo_sdk::registerNodeType(type);
  }

  SceneBuilder made;
  Node& lamp = made.node("lateLamp", "lamp");
};

TEST_F(OpenThenDeclared, InputsThatTheTypeDoesNotHave) {
  lamp.createInput("other", AttrType::Real);
  expectCarried(made.scene);
  declare();
  expectRefused(made.scene, "lamp", ".other", reasons::UNDECLARED_INPUT);
}

TEST_F(OpenThenDeclared, FormerNames) {
  lamp.createInput("intensity", AttrType::Real);
  declare();
  expectRefused(made.scene, "lamp", ".intensity", reasons::FORMER_INPUT);
}

TEST_F(OpenThenDeclared, InputsOfAnotherType) {
  lamp.createInput("power", AttrType::Int);
  SceneBuilder::setBuffer(static_cast<Input&>(*lamp.createInput("samples", AttrType::Buffer)),
                          DataType::Double, std::vector<double>{1});
  declare();
  const vsa::TextResult written = vsa::writeText(made.scene);
  ASSERT_EQ(written.problemCount, 2u);
  EXPECT_EQ(written.problems[0].reason, reasons::DECLARED_TYPE);
  EXPECT_EQ(written.problems[1].reason, reasons::DECLARED_TYPE);
}

TEST_F(OpenThenDeclared, ValuesThatAreRefused) {
  SceneBuilder::setInteger(static_cast<Input&>(*lamp.createInput("filter", AttrType::Int)), 1);
  declare();
  expectRefused(made.scene, "lamp", ".filter", reasons::REFUSED_VALUE);
}

// The declared inputs accept only links. As long as they have the values of a new input, the text
// can omit the values, and no problem is reported.
TEST_F(OpenThenDeclared, ZerosThatAreRefused) {
  using zn::korvo_sdk::InputDeclaration;
  zn::korvo_sdk::NodeType type;
  type.name = "lateLamp";
  for (const AttrType each : {AttrType::Bool, AttrType::Int, AttrType::UInt, AttrType::Real,
                              AttrType::String, AttrType::Vec2}) {
    const std::string name = zn::korvo_sdk::attrTypeName(each);
    type.inputs.push_back({.name = name, .type = each, .refusesValues = true});
    lamp.createInput(name.c_str(), each);
  }
  type.inputs.push_back({.name = "keys", .type = AttrType::Array, .refusesValues = true});
  lamp.createArray("keys", AttrType::Null);
  type.inputs.push_back({.name = "samples", .type = AttrType::Buffer, .refusesValues = true});
  Input& samples = static_cast<Input&>(*lamp.createInput("samples", AttrType::Buffer));
  zn::korvo_sdk::registerNodeType(type);
  expectCarried(made.scene);
  const auto input = [&](const char* name) -> Input& {
    return static_cast<Input&>(*lamp.input(name));
  };
  SceneBuilder::setInteger(input("Bool"), 1);
  SceneBuilder::setReal(input("Real"), -0.0);
  SceneBuilder::setString(input("String"), "a");
  SceneBuilder::setComponents(input("Vec2"), {0, 1});
  SceneBuilder::setBuffer(samples, DataType::Float, std::vector<float>{0});
  const vsa::TextResult written = vsa::writeText(made.scene);
  ASSERT_EQ(written.problemCount, 5u);
  for (const vsa::WriteProblem& each : written.problems) {
    EXPECT_EQ(each.reason, reasons::REFUSED_VALUE) << each.input;
  }
}

TEST_F(OpenThenDeclared, LinksOfInputsThatRefuseValues) {
  lamp.createInput("filter", AttrType::Int)->connect(made.n.output("out"));
  declare();
  expectCarried(made.scene);
}

TEST_F(OpenThenDeclared, ValuesOfInputsOfNoType) {
  lamp.createInput("none", AttrType::Int);
  declare();
  expectRefused(made.scene, "lamp", ".none", reasons::DECLARED_TYPE);
}

TEST_F(OpenThenDeclared, MembersOfInputsOfNoType) {
  Input& none = static_cast<Input&>(*lamp.createInput("none", AttrType::Object));
  declare();
  expectRefused(made.scene, "lamp", ".none", reasons::DECLARED_TYPE);
  none.createInput("x", AttrType::Bool);
  expectCarried(made.scene);
}

TEST_F(OpenThenDeclared, Outputs) {
  made.input("x", AttrType::Null).connect(lamp.output("color"));
  made.input("y", AttrType::Null).connect(lamp.output("none"));
  declare();
  const vsa::TextResult written = vsa::writeText(made.scene);
  ASSERT_EQ(written.problemCount, 2u);
  EXPECT_EQ(written.problems[0].reason, reasons::FORMER_OUTPUT);
  EXPECT_EQ(written.problems[1].reason, reasons::NO_OUTPUT);
}

TEST_F(OpenThenDeclared, DeclaredArraysAndInputsOfNoType) {
  declare();
  Node& declared = made.node("lateLamp", "declared");
  Input& keys = static_cast<Input&>(*declared.input("keys"));
  keys.appendElement();
  keys.element(0)->setNode(&made.n);
  declared.input("none")->setNode(&made.n);
  expectCarried(made.scene);
}

}  // namespace

}  // namespace vsa_tests
