// Tests of what a text cannot represent. Each problem is found before anything is written, with its
// node, its input and the reason. With the option `lossy`, the text contains everything else, and
// for some values a similar one that a text can represent.
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <utility>

#include "tests/write/round_trip.h"
#include "tests/write/scene_builder.h"
#include "write/walk/reasons.h"

namespace vsa_tests {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Scene;
namespace reasons = vsa::impl::reasons;

const double OTHER_NAN = std::bit_cast<double>(std::uint64_t{0x7FF8000000000001});

constexpr const char* BAD_NAMES[] = {"",     "1a",    "a b",   "a.b",   "a-b", "true",
                                     "NULL", "False", "a\xFF", "\xFF",  "a\n", "#",
                                     "a[0]", "\"a\"", "a;",    "nu ll", " a",  "a\x01"};

TEST(WriteProblems, TextsOfTheReasons) {
  const std::pair<const char*, const char*> texts[] = {
      {reasons::NODE_NAME, "the name of the node is not an identifier"},
      {reasons::NODE_TYPE, "the type of the node is not an identifier"},
      {reasons::INPUT_NAME, "the name is not an identifier"},
      {reasons::FORMER_INPUT, "the name is a former name of another input of this node type"},
      {reasons::OUTPUT_NAME, "the name of the connected output is not an identifier"},
      {reasons::FORMER_OUTPUT,
       "the name of the connected output is a former name of another output of that node type"},
      {reasons::NO_OUTPUT, "the connected node's type no longer declares the output"},
      {reasons::LINKED_NODE_NAME, "the linked node has no name and type that a text can carry"},
      {reasons::FOREIGN_NODE, "the linked node is in another scene"},
      {reasons::INFINITE_REAL, "plus infinity stands in lists only, not alone"},
      {reasons::NAN_REAL, "the only not-a-number that stands alone is -nan"},
      {reasons::NAN_BITS, "a not-a-number keeps its sign only, not its other bits"},
      {reasons::UNTYPED_BUFFER, "the buffer has no element type"},
      {reasons::HOST_ELEMENTS, "buffers of this element type are for hosts only"},
      {reasons::BUFFER_SIZE, "the buffer's memory does not fit its count and its element type"},
      {reasons::LATE_UNTYPED_BUFFER,
       "an earlier element of the array has no element type and would get the one of this buffer"},
      {reasons::TYPED_EMPTY_ARRAY, "no element gives the array its element type"},
      {reasons::MIXED_ELEMENT, "the type of the element is not that of its array"},
      {reasons::UNDECLARED_INPUT, "the node type does not declare the input"},
      {reasons::DECLARED_TYPE, "the node type declares the input with another type"},
      {reasons::REFUSED_VALUE, "the node type declares the input to take links only"},
      {reasons::COMMENT,
       "the comment does not begin with \"#\", or has a line end, a NUL byte or a byte 0xFF"},
      {reasons::VERSION, "the comments say another version"},
      {reasons::TIME, "the comments say another time"},
  };
  for (const auto& [found, expected] : texts) EXPECT_STREQ(found, expected);
}

TEST(WriteProblems, NamesOfNodesAndTypes) {
  for (const char* const name : BAD_NAMES) {
    Scene named, typed;
    named.createNode("t", name, "");
    expectRefused(named, name, "", reasons::NODE_NAME);
    EXPECT_EQ(lossyText(named), "");
    typed.createNode(name, "n", "");
    expectRefused(typed, "n", "", reasons::NODE_TYPE);
  }
}

TEST(WriteProblems, NamesOfInputsAndMembers) {
  for (const char* const name : BAD_NAMES) {
    SceneBuilder made, member;
    made.input(name, AttrType::Bool);
    made.input("kept", AttrType::Bool);
    expectRefused(made.scene, "n", std::string(".") + name, reasons::INPUT_NAME);
    EXPECT_EQ(lossyText(made.scene), "thing n:\n  .kept = false;\n");
    if (*name == '[') continue;  // the scene accepts no such member
    member.input("o", AttrType::Object).createInput(name, AttrType::Bool);
    expectRefused(member.scene, "n", std::string(".o.") + name, reasons::INPUT_NAME);
  }
}

TEST(WriteProblems, NamesWithANul) {
  SceneBuilder made;
  made.n.createInput(zn::String::copyOf(std::string_view("a\0b", 3)), AttrType::Bool);
  expectRefused(made.scene, "n", std::string_view(".a\0b", 4), reasons::INPUT_NAME);
}

TEST(WriteProblems, NamesOfOutputs) {
  for (const char* const name :
       {"", "1", "a b", "a.b", "null", "a[x]", "a[", "a[2 ", "a]", "a[0]b", "[0]"}) {
    SceneBuilder made;
    made.input("x", AttrType::Null).connect(made.n.output(name));
    expectRefused(made.scene, "n", ".x", reasons::OUTPUT_NAME);
  }
  for (const char* const name : {"a", "a[0]", "a[*][ 12 ]", "a[[1]", "vec3"}) {
    SceneBuilder made;
    made.input("x", AttrType::Null).connect(made.n.output(name));
    expectCarried(made.scene);
  }
}

TEST(WriteProblems, LinksToNodesWithoutACarriedName) {
  SceneBuilder made;
  Node& other = made.node("t", "a b");
  made.input("r", AttrType::Node).setNode(&other);
  made.input("c", AttrType::Real).connect(other.output("out"));
  const vsa::TextResult written = vsa::writeText(made.scene);
  ASSERT_EQ(written.problemCount, 3u);
  EXPECT_EQ(written.problems[0].input, ".r");
  EXPECT_EQ(written.problems[0].reason, reasons::LINKED_NODE_NAME);
  EXPECT_EQ(written.problems[1].input, ".c");
  EXPECT_EQ(written.problems[1].reason, reasons::LINKED_NODE_NAME);
  EXPECT_EQ(written.problems[2].reason, reasons::NODE_NAME);
  for (const vsa::WriteProblem& problem : written.problems) EXPECT_FALSE(problem.isReplaced);
  EXPECT_EQ(lossyText(made.scene), "thing n:\n  .c = 0.0;\n");
}

TEST(WriteProblems, LinksToAnotherScene) {
  SceneBuilder made, other;
  made.input("r", AttrType::Node).setNode(&other.n);
  expectRefused(made.scene, "n", ".r", reasons::FOREIGN_NODE);
}

TEST(WriteProblems, RealsThatCannotStandAlone) {
  for (const auto& [value, reason] : {std::pair{INF, reasons::INFINITE_REAL},
                                      {NAN_OF_TEXT, reasons::NAN_REAL},
                                      {OTHER_NAN, reasons::NAN_REAL},
                                      {-OTHER_NAN, reasons::NAN_REAL}}) {
    SceneBuilder made;
    SceneBuilder::setReal(made.input("x", AttrType::Real), value);
    expectRefused(made.scene, "n", ".x", reason);
    EXPECT_EQ(lossyText(made.scene), value == INF ? "thing n:\n" : "thing n:\n  .x = -nan;\n");
  }
}

TEST(WriteProblems, OtherBitsOfANan) {
  SceneBuilder made;
  SceneBuilder::setComponents(made.input("x", AttrType::Vec2), {1, OTHER_NAN});
  expectRefused(made.scene, "n", ".x", reasons::NAN_BITS);
  EXPECT_EQ(lossyText(made.scene), "thing n:\n  .x = vec2(1 nan);\n");
  for (const std::uint32_t bits : {0x7F800001u, 0xFFC00001u, 0x7FFFFFFFu}) {
    SceneBuilder floats;
    std::vector<std::uint32_t> numbers(5000);
    numbers.back() = bits;
    SceneBuilder::setBuffer(floats.input("x", AttrType::Buffer), DataType::Float, numbers);
    expectRefused(floats.scene, "n", ".x", reasons::NAN_BITS);
  }
  SceneBuilder doubles;
  SceneBuilder::setBuffer(doubles.input("x", AttrType::Buffer), DataType::Vec2d,
                          std::vector<double>{OTHER_NAN, 1});
  expectRefused(doubles.scene, "n", ".x", reasons::NAN_BITS);
}

TEST(WriteProblems, Buffers) {
  SceneBuilder untyped;
  untyped.input("x", AttrType::Buffer);
  expectRefused(untyped.scene, "n", ".x", reasons::UNTYPED_BUFFER);
  for (const DataType type :
       {DataType::Bool, DataType::Ptr, DataType::Xformf, DataType::Aabbd, DataType::Obbi}) {
    SceneBuilder made;
    SceneBuilder::setBuffer(made.input("x", AttrType::Buffer), type, std::vector<char>(512));
    expectRefused(made.scene, "n", ".x", reasons::HOST_ELEMENTS);
  }
}

TEST(WriteProblems, BuffersWhoseMemoryDoesNotFit) {
  for (const auto& [count, bytes] : {std::pair<std::uint64_t, std::uint64_t>{2, 4},
                                     {1, 8},
                                     {1, 6},
                                     {std::uint64_t{1} << 62, 0},
                                     {0, 4},
                                     {1, 4}}) {
    SceneBuilder made;
    zn::korvo_sdk::AttrData data;
    data.type = AttrType::Buffer;
    const bool hasMemory = count != 1 || bytes != 4;
    auto* const memory = hasMemory ? static_cast<unsigned char*>(std::malloc(8)) : nullptr;
    data.payload.buffer = {memory, count, bytes, DataType::Float, 0};
    made.input("x", AttrType::Buffer).assign(data);
    expectRefused(made.scene, "n", ".x", reasons::BUFFER_SIZE);
  }
}

TEST(WriteProblems, UntypedBufferBeforeATypedOne) {
  SceneBuilder made;
  Input& array = made.array("x", AttrType::Buffer);
  for (int i = 0; i < 3; ++i) array.appendElement();
  const auto at = [&](std::uint64_t index) -> Input& {
    return static_cast<Input&>(*array.element(index));
  };
  SceneBuilder::setBuffer(at(0), DataType::Float, std::vector<float>{1});
  SceneBuilder::setBuffer(at(2), DataType::Float, std::vector<float>{1});
  expectRefused(made.scene, "n", ".x[2]", reasons::LATE_UNTYPED_BUFFER);
}

TEST(WriteProblems, ArraysWhoseElementTypeNothingSays) {
  SceneBuilder made;
  made.array("x", AttrType::Int);
  expectRefused(made.scene, "n", ".x", reasons::TYPED_EMPTY_ARRAY);
  SceneBuilder nodes;
  nodes.array("x", AttrType::Node).appendElement();
  expectRefused(nodes.scene, "n", ".x", reasons::TYPED_EMPTY_ARRAY);
}

TEST(WriteProblems, ArraysOfMixedTypes) {
  SceneBuilder made;
  Input& array = made.array("x", AttrType::Int);
  array.appendElement();
  zn::korvo_sdk::AttrData reals;
  reals.type = AttrType::Array;
  reals.elementType = static_cast<int>(AttrType::Real);
  array.set(reals);
  array.appendElement();
  const vsa::TextResult written = vsa::writeText(made.scene);
  ASSERT_EQ(written.problemCount, 2u);
  EXPECT_EQ(written.problems[0].input, ".x[1]");
  EXPECT_EQ(written.problems[0].reason, reasons::MIXED_ELEMENT);
  EXPECT_FALSE(written.problems[0].isReplaced);
  EXPECT_EQ(written.problems[1].reason, reasons::TYPED_EMPTY_ARRAY);
  EXPECT_TRUE(written.problems[1].isReplaced);
}

TEST(WriteProblems, ValuesBehindALinkOfNoType) {
  SceneBuilder made;
  Input& array = made.array("x", AttrType::Null);
  array.appendElement();
  array.element(0)->connect(made.n.output("out"));
  array.appendElement();
  static_cast<Input&>(*array.element(1)).createInput("y", AttrType::Int);
  expectRefused(made.scene, "n", ".x[1]", reasons::MIXED_ELEMENT);
}

TEST(WriteProblems, ElementsThatNoTextHas) {
  SceneBuilder made;
  Input& array = made.array("x", AttrType::Real);
  array.appendElement();
  SceneBuilder::setReal(static_cast<Input&>(*array.element(0)), INF);
  array.appendElement();
  expectRefused(made.scene, "n", ".x[0]", reasons::INFINITE_REAL);
  SceneBuilder::setReal(static_cast<Input&>(*array.element(0)), OTHER_NAN);
  EXPECT_EQ(lossyText(made.scene), "thing n:\n  .x[0] = -nan;\n  .x[1] = 0.0;\n");
}

TEST(WriteProblems, Headers) {
  for (const std::string& comment :
       {std::string("no sign"), std::string(""), std::string("# a\nb"), std::string("# a\rb"),
        std::string("# a\0b", 5), std::string("# \xFF")}) {
    SceneBuilder made;
    made.scene.pushFileComment(zn::String::copyOf(comment));
    expectRefused(made.scene, "", "", reasons::COMMENT);
    EXPECT_EQ(lossyText(made.scene), "thing n;\n");
  }
  for (const char* const time : {" 1", "1 ", "a\nb", "version: 1"}) {
    SceneBuilder made;
    made.scene.setFileTime(time);
    expectRefused(made.scene, "", "", reasons::TIME);
  }
  SceneBuilder forgotten;
  forgotten.scene.pushFileComment("# time: 1");
  expectRefused(forgotten.scene, "", "", reasons::TIME);
}

TEST(WriteProblems, HeaderOfCommentsOnly) {
  SceneBuilder made;
  made.scene.setFileVersion(2);
  vsa::WriteOptions options;
  options.header = vsa::HeaderForm::Comments;
  const vsa::TextResult written = vsa::writeText(made.scene, options);
  ASSERT_EQ(written.problemCount, 1u);
  EXPECT_EQ(written.problems[0].reason, reasons::VERSION);
  options.header = vsa::HeaderForm::None;
  EXPECT_EQ(vsa::writeText(made.scene, options).text, "thing n;\n");
}

TEST(WriteProblems, AreKeptUpToALimit) {
  SceneBuilder made;
  for (int i = 0; i < 5; ++i) made.input(("a b" + std::to_string(i)).c_str(), AttrType::Bool);
  vsa::WriteOptions options;
  options.keptProblems = 2;
  const vsa::TextResult written = vsa::writeText(made.scene, options);
  EXPECT_EQ(written.problemCount, 5u);
  EXPECT_EQ(written.problems.size(), 2u);
  EXPECT_EQ(written.message,
            "a text cannot carry the scene: n.a b0: the name is not an identifier (and 4 more)");
  options.keptProblems = 0;
  EXPECT_EQ(vsa::writeText(made.scene, options).message, "a text cannot carry the scene");
}

}  // namespace

}  // namespace vsa_tests
