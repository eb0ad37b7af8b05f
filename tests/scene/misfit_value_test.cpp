// Tests of values that do not have the type of a declared input. The input does not change, and the
// memory of the value is freed. If it were not, LeakSanitizer would report it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include <vsa/model/scene.h>
#include <vsa/scene/node_type.h>

namespace zn::korvo_sdk {
namespace {

class MisfitValue : public testing::Test {
 protected:
  MisfitValue() {
    NodeType type;
    type.name = "gauge";
    type.inputs.resize(3);
    type.inputs[0].name = "level";
    type.inputs[0].type = AttrType::Int;
    type.inputs[1].name = "label";
    type.inputs[1].type = AttrType::String;
    type.inputs[2].name = "points";
    type.inputs[2].type = AttrType::Buffer;
    registerNodeType(type);
    node_ = scene_.createNode("gauge", "g", "");
  }
  ~MisfitValue() override { unregisterNodeType("gauge"); }

  Scene scene_;
  Node* node_;
};

AttrData textValue() {
  AttrData value;
  value.type = AttrType::String;
  value.payload.string = static_cast<char*>(std::calloc(8, 1));
  std::memcpy(value.payload.string, "text", 5);
  return value;
}

AttrData bufferValue() {
  AttrData value;
  value.type = AttrType::Buffer;
  value.payload.buffer = {};
  value.payload.buffer.type = DataType::Byte;
  value.payload.buffer.count = 4;
  value.payload.buffer.bytes = 4;
  value.payload.buffer.memory = static_cast<unsigned char*>(std::calloc(4, 1));
  return value;
}

TEST_F(MisfitValue, ATextForANumber) {
  node_->input("level")->assign(textValue());
  EXPECT_EQ(node_->input("level")->type(), AttrType::Int);
}

TEST_F(MisfitValue, ABufferForANumberOrAText) {
  node_->input("level")->assign(bufferValue());
  node_->input("label")->assign(bufferValue());
  EXPECT_EQ(node_->input("level")->type(), AttrType::Int);
  EXPECT_EQ(node_->input("label")->type(), AttrType::String);
}

TEST_F(MisfitValue, AStructureForANumber) {
  AttrData structure;
  structure.type = AttrType::Buffer;
  structure.elementType = static_cast<int>(DataType::Float);
  node_->input("level")->set(structure);
  structure.type = AttrType::Int;
  node_->input("level")->set(structure);
  structure.type = AttrType::Array;
  structure.elementType = static_cast<int>(AttrType::Int);
  node_->input("level")->set(structure);
  EXPECT_EQ(node_->input("level")->type(), AttrType::Int);
  EXPECT_EQ(node_->input("level")->elementType(), AttrType::Null);
}

TEST_F(MisfitValue, MatchingValuesAreAssignedTwice) {
  for (int i = 0; i < 2; ++i) {
    node_->input("label")->assign(textValue());
    node_->input("points")->assign(bufferValue());
  }
  EXPECT_EQ(node_->input("points")->bufferType(), DataType::Byte);
}

}  // namespace
}  // namespace zn::korvo_sdk
