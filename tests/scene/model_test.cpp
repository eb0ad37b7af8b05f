// Tests of the library's scene: nodes, inputs of every kind, links, removal, and the addresses of
// inputs.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "scene/model/input_impl.h"
#include "tests/support/parser_fixture.h"
#include "tests/support/text.h"

namespace zn::korvo_sdk {
namespace {

using vsa_tests::LoggedLines;
using vsa_tests::text;
using Lines = std::vector<std::string>;

AttrData structure(AttrType type, int elementType) {
  AttrData data;
  data.type = type;
  data.elementType = elementType;
  return data;
}

AttrData integer(std::int64_t value) {
  AttrData data;
  data.type = AttrType::Int;
  data.payload.integer = value;
  return data;
}

AttrData stringValue(const char* characters) {
  AttrData data;
  data.type = AttrType::String;
  data.payload.string = static_cast<char*>(std::malloc(std::strlen(characters) + 1));
  std::strcpy(data.payload.string, characters);
  return data;
}

AttrData bufferValue(DataType type, std::uint64_t count) {
  AttrData data;
  data.type = AttrType::Buffer;
  data.elementType = static_cast<int>(type);
  const std::uint64_t bytes = count * elementBytes(type);
  void* const memory = bytes == 0 ? nullptr : std::calloc(1, static_cast<std::size_t>(bytes));
  data.payload.buffer = {static_cast<unsigned char*>(memory), count, bytes, type, 0};
  return data;
}

// --- nodes ---

TEST(SceneNodes, AreKeptInCreationOrderUnderExactNames) {
  Scene scene;
  Node* const b = scene.createNode("lamp", "b", "");
  Node* const a = scene.createNode("cube", "a", "an argument without meaning");
  EXPECT_EQ(scene.findNode("a"), a);
  EXPECT_EQ(scene.findNode("b"), b);
  EXPECT_EQ(scene.findNode("B"), nullptr);
  EXPECT_EQ(scene.findNode(""), nullptr);
  EXPECT_EQ(scene.nodeCount(), 2U);
  EXPECT_EQ(scene.nodeAt(0), b);
  EXPECT_EQ(scene.nodeAt(1), a);
  EXPECT_EQ(scene.nodeAt(2), nullptr);
  EXPECT_EQ(text(a->type()), "cube");
  EXPECT_EQ(text(a->name()), "a");
  EXPECT_EQ(a->scene(), &scene);
}

TEST(SceneNodes, ANameIsTakenOnce) {
  Scene scene;
  scene.createNode("lamp", "a", "");
  EXPECT_EQ(scene.createNode("lamp", "a", ""), nullptr);
  EXPECT_EQ(scene.nodeCount(), 1U);
}

TEST(SceneNodes, DefineNode) {
  Scene scene;
  Node* const node = scene.defineNode("settings");
  EXPECT_EQ(text(node->type()), "settings");
  EXPECT_EQ(text(node->name()), "settings");
  EXPECT_EQ(scene.defineNode("settings"), node);
  EXPECT_EQ(scene.nodeCount(), 1U);
}

TEST(SceneNodes, ManyOfThem) {
  Scene scene;
  std::vector<Node*> nodes;
  for (unsigned long long i = 0; i < 5000; ++i) {
    nodes.push_back(scene.createNode("lamp", String("n") + String(i), ""));
  }
  for (unsigned long long i = 0; i < 5000; i += 3) scene.removeNode(String("n") + String(i));
  for (unsigned long long i = 0; i < 5000; ++i) {
    EXPECT_EQ(scene.findNode(String("n") + String(i)), i % 3 == 0 ? nullptr : nodes[i]);
  }
}

// A short list is searched linearly, and a longer list through an index. A very long list has its
// own memory block.
TEST(SceneNodes, WithThousandsOfInputsAndOutputs) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  std::vector<Input*> inputs;
  std::vector<Output*> outputs;
  for (unsigned long long i = 0; i < 10000; ++i) {
    inputs.push_back(node->createInput(String(i), AttrType::Int));
    outputs.push_back(node->output(String(i)));
    ASSERT_EQ(node->inputCount(), i + 1);
  }
  for (unsigned long long i = 0; i < 10000; ++i) {
    ASSERT_EQ(node->inputAt(i), inputs[i]);
    ASSERT_EQ(node->input(String(i)), inputs[i]);
    ASSERT_EQ(node->output(String(i)), outputs[i]);
    ASSERT_EQ(text(outputs[i]->name()), std::to_string(i));
    ASSERT_EQ(outputs[i]->node(), node);
  }
  EXPECT_EQ(node->input("10000"), nullptr);
}

TEST(SceneNodes, AFreshScene) {
  const Scene scene;
  EXPECT_EQ(scene.fileVersion(), 0U);
  EXPECT_EQ(text(scene.fileTime()), "");
  EXPECT_EQ(scene.fileCommentCount(), 0U);
  EXPECT_EQ(scene.nodeCount(), 0U);
  EXPECT_EQ(scene.emptyElementLimit(), 524288U);
  EXPECT_EQ(scene.depthLimit(), 256U);
}

// --- removal ---

TEST(SceneRemoval, AMissingNameDoesNothing) {
  Scene scene;
  scene.createNode("lamp", "a", "");
  scene.removeNode("b");
  EXPECT_EQ(scene.nodeCount(), 1U);
}

TEST(SceneRemoval, NodeIsNotFoundButStaysInMemory) {
  Scene scene;
  Node* const a = scene.createNode("lamp", "a", "");
  Input* const input = a->createInput("x", AttrType::Int);
  scene.removeNode("a");
  EXPECT_TRUE(a->isRemoved());
  EXPECT_EQ(scene.findNode("a"), nullptr);
  EXPECT_EQ(scene.nodeCount(), 0U);
  EXPECT_EQ(scene.nodeSlots(), 1U);
  EXPECT_EQ(scene.nodeAt(0), nullptr);
  input->assign(integer(3));
  EXPECT_EQ(text(input->path()), "a.x");
  scene.removeNode("a");
  Node* const again = scene.createNode("cube", "a", "");
  EXPECT_NE(again, a);
  EXPECT_EQ(scene.findNode("a"), again);
  EXPECT_EQ(again->inputCount(), 0U);
}

TEST(SceneRemoval, LinksToTheNodeAreRemoved) {
  Scene scene;
  Node* const a = scene.createNode("lamp", "a", "");
  Node* const b = scene.createNode("lamp", "b", "");
  Input* const connected = b->createInput("c", AttrType::Int);
  Input* const referring = b->createInput("r", AttrType::Null);
  connected->connect(a->output("out"));
  referring->setNode(a);
  EXPECT_EQ(connected->connection(), a->output("out"));
  EXPECT_EQ(referring->node(), a);
  scene.removeNode("a");
  EXPECT_EQ(connected->connection(), nullptr);
  EXPECT_EQ(referring->node(), nullptr);
  EXPECT_EQ(referring->type(), AttrType::Node);
  scene.createNode("lamp", "a", "");
  EXPECT_EQ(connected->connection(), nullptr);
  EXPECT_EQ(referring->node(), nullptr);
}

// --- inputs ---

TEST(SceneInputs, AnOpenTypeTakesAnyInputAndHasAnyOutput) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  EXPECT_FALSE(node->hasInput("x", AttrType::Null));
  EXPECT_EQ(node->input("x"), nullptr);
  Input* const x = node->createInput("x", AttrType::Real);
  ASSERT_NE(x, nullptr);
  EXPECT_TRUE(node->hasInput("x", AttrType::Null));
  EXPECT_TRUE(node->hasInput("x", AttrType::Real));
  EXPECT_FALSE(node->hasInput("x", AttrType::Int));
  EXPECT_FALSE(node->hasInput("X", AttrType::Null));
  EXPECT_EQ(node->input("x"), x);
  EXPECT_EQ(node->inputAt(0), x);
  EXPECT_EQ(node->inputAt(1), nullptr);
  EXPECT_EQ(x->owner(), node);
  EXPECT_EQ(x->level(), 1U);
  Output* const out = node->output("any");
  EXPECT_EQ(node->output("any"), out);
  EXPECT_EQ(out->node(), node);
  EXPECT_EQ(text(out->name()), "any");
}

TEST(SceneInputs, CreatingANameAgain) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  Input* const x = node->createInput("x", AttrType::Int);
  EXPECT_EQ(node->createInput("x", AttrType::Int), x);
  EXPECT_EQ(node->createInput("x", AttrType::Real), nullptr);
  EXPECT_EQ(node->createArray("x", AttrType::Int), nullptr);
  Input* const a = node->createArray("a", AttrType::Int);
  EXPECT_EQ(node->createArray("a", AttrType::Int), a);
  EXPECT_EQ(node->createInput("a", AttrType::Array), a);
  EXPECT_EQ(node->inputCount(), 2U);
}

TEST(SceneInputs, ManyOfThem) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  std::vector<Input*> inputs;
  for (unsigned long long i = 0; i < 100; ++i) {
    inputs.push_back(node->createInput(String(i), AttrType::Int));
  }
  for (unsigned long long i = 0; i < 100; ++i) {
    EXPECT_EQ(node->input(String(i)), inputs[i]);
    EXPECT_EQ(node->inputAt(i), inputs[i]);
  }
  EXPECT_EQ(node->input("100"), nullptr);
}

TEST(SceneInputs, NewInputHasTheZeroOfItsType) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  for (int value = 0; value < ATTR_TYPE_COUNT; ++value) {
    const auto type = static_cast<AttrType>(value);
    const Input* const input = node->createInput(attrTypeName(type), type);
    SCOPED_TRACE(attrTypeName(type));
    EXPECT_EQ(input->type(), type);
    EXPECT_EQ(text(input->typeName()), attrTypeName(type));
    EXPECT_EQ(input->holdsBuffer(false), type == AttrType::Buffer);
    EXPECT_EQ(input->isArray(false), type == AttrType::Array);
    EXPECT_FALSE(input->boolean());
    EXPECT_EQ(input->integer(), 0);
    EXPECT_EQ(input->real(), 0.0);
    EXPECT_STREQ(input->string(), "");
    EXPECT_EQ(input->node(), nullptr);
    EXPECT_EQ(input->connection(), nullptr);
    EXPECT_EQ(input->bufferType(), DataType::Null);
    EXPECT_EQ(input->buffer().count, 0U);
    EXPECT_EQ(input->elementType(), AttrType::Null);
    EXPECT_EQ(input->count(), 0U);
    EXPECT_EQ(input->memberCount(), 0U);
    EXPECT_EQ(input->member(0), nullptr);
    EXPECT_FALSE(input->refusesValues());
    EXPECT_EQ(input->enumValues(), nullptr);
    ASSERT_EQ(input->components() != nullptr, componentCount(type) != 0);
    for (unsigned i = 0; i < componentCount(type); ++i) EXPECT_EQ(input->components()[i], 0.0);
  }
}

TEST(SceneInputs, Members) {
  Scene scene;
  Input* const object = scene.createNode("open", "n", "")->createInput("o", AttrType::Object);
  Input* const x = object->createInput("x", AttrType::Int);
  Input* const a = object->createArray("a", AttrType::Real);
  EXPECT_EQ(object->memberCount(), 2U);
  EXPECT_EQ(object->member(0), x);
  EXPECT_EQ(object->member(1), a);
  EXPECT_EQ(a->elementType(), AttrType::Real);
  EXPECT_EQ(x->level(), 2U);
  EXPECT_EQ(text(x->path()), "n.o.x");
  EXPECT_TRUE(object->hasInput("x", AttrType::Null));
  EXPECT_TRUE(object->hasInput("x", AttrType::Int));
  EXPECT_FALSE(object->hasInput("x", AttrType::Real));
  EXPECT_EQ(object->input("x"), x);
  EXPECT_EQ(object->input("y"), nullptr);
  EXPECT_EQ(object->createInput("x", AttrType::Int), x);
  EXPECT_EQ(object->createInput("x", AttrType::Real), nullptr);
  EXPECT_EQ(object->createArray("a", AttrType::Int), a);
  EXPECT_EQ(object->createInput("[0]", AttrType::Int), nullptr);
  EXPECT_EQ(object->createArray("[0]", AttrType::Int), nullptr);
  EXPECT_EQ(object->memberCount(), 2U);
}

TEST(SceneInputs, AMemberTurnsANullInputIntoAnObject) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  Input* const one = node->createInput("one", AttrType::Null);
  EXPECT_EQ(one->createInput("[1]", AttrType::Int), nullptr);
  EXPECT_EQ(one->type(), AttrType::Null);
  EXPECT_NE(one->createInput("x", AttrType::Int), nullptr);
  EXPECT_EQ(one->type(), AttrType::Object);
  Input* const other = node->createInput("other", AttrType::Null);
  EXPECT_NE(other->createArray("x", AttrType::Int), nullptr);
  EXPECT_EQ(other->type(), AttrType::Object);
}

TEST(SceneInputs, EveryOtherKindRefusesMembers) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  for (int value = 1; value < ATTR_TYPE_COUNT - 1; ++value) {
    const auto type = static_cast<AttrType>(value);
    Input* const input = node->createInput(attrTypeName(type), type);
    EXPECT_EQ(input->createInput("x", AttrType::Int), nullptr) << attrTypeName(type);
    EXPECT_EQ(input->createArray("x", AttrType::Int), nullptr) << attrTypeName(type);
    EXPECT_FALSE(input->hasInput("x", AttrType::Null));
    EXPECT_EQ(input->type(), type);
  }
}

TEST(SceneInputs, Elements) {
  Scene scene;
  Input* const array = scene.createNode("open", "n", "")->createArray("a", AttrType::Object);
  EXPECT_EQ(array->type(), AttrType::Array);
  EXPECT_EQ(array->elementType(), AttrType::Object);
  EXPECT_EQ(array->element(0), nullptr);
  array->appendElement();
  array->appendElement();
  EXPECT_EQ(array->count(), 2U);
  EXPECT_EQ(array->element(2), nullptr);
  EXPECT_EQ(array->element(UINT64_MAX), nullptr);
  Input* const second = array->element(1);
  EXPECT_EQ(second->type(), AttrType::Object);
  EXPECT_EQ(second->level(), 2U);
  EXPECT_EQ(text(second->path()), "n.a[1]");
  EXPECT_EQ(text(second->createInput("x", AttrType::Int)->path()), "n.a[1].x");
  EXPECT_FALSE(array->hasInput("[1]", AttrType::Null));
  EXPECT_FALSE(array->hasInput("1", AttrType::Null));
  EXPECT_EQ(array->input("[1]"), nullptr);
}

TEST(SceneInputs, PathsOfNestedArrays) {
  Scene scene;
  Input* const outer = scene.createNode("open", "n", "")->createArray("a", AttrType::Array);
  outer->appendElement();
  Input* const inner = outer->element(0);
  inner->set(structure(AttrType::Array, static_cast<int>(AttrType::Int)));
  for (int i = 0; i < 13; ++i) inner->appendElement();
  EXPECT_EQ(text(inner->element(12)->path()), "n.a[0][12]");
  EXPECT_EQ(inner->element(12)->type(), AttrType::Int);
}

TEST(SceneInputs, ElementsOfOtherKindsOfInputs) {
  Scene scene;
  Input* const input = scene.createNode("open", "n", "")->createInput("x", AttrType::Int);
  input->appendElement();
  EXPECT_EQ(input->count(), 0U);
  EXPECT_EQ(input->element(0), nullptr);
}

// --- values ---

TEST(SceneValues, SetGivesAnArrayItsElementType) {
  Scene scene;
  Input* const array = scene.createNode("open", "n", "")->createArray("a", AttrType::Null);
  array->set(structure(AttrType::Array, static_cast<int>(AttrType::Vec3)));
  EXPECT_EQ(array->elementType(), AttrType::Vec3);
  array->appendElement();
  EXPECT_EQ(array->element(0)->type(), AttrType::Vec3);
  array->set(structure(AttrType::Array, static_cast<int>(AttrType::Null)));
  EXPECT_EQ(array->elementType(), AttrType::Null);
}

TEST(SceneValues, SetMakesAnEmptyBuffer) {
  Scene scene;
  Input* const buffer = scene.createNode("open", "n", "")->createInput("b", AttrType::Buffer);
  buffer->set(structure(AttrType::Buffer, static_cast<int>(DataType::Float)));
  EXPECT_EQ(buffer->bufferType(), DataType::Float);
  EXPECT_EQ(buffer->buffer().memory, nullptr);
  buffer->assign(bufferValue(DataType::Float, 3));
  EXPECT_EQ(buffer->buffer().count, 3U);
  buffer->set(structure(AttrType::Buffer, static_cast<int>(DataType::Byte)));
  EXPECT_EQ(buffer->bufferType(), DataType::Byte);
  EXPECT_EQ(buffer->buffer().count, 0U);
  EXPECT_EQ(buffer->buffer().memory, nullptr);
}

TEST(SceneValues, AssignTakesOwnershipOfTheMemory) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  Input* const name = node->createInput("s", AttrType::String);
  name->assign(stringValue("first"));
  EXPECT_STREQ(name->string(), "first");
  const AttrData longText = stringValue(std::string(100'000, 'x').c_str());
  name->assign(longText);
  EXPECT_EQ(name->string(), longText.payload.string);
  name->assign(stringValue("second"));
  EXPECT_STREQ(name->string(), "second");
  AttrData none;
  none.type = AttrType::String;
  none.payload.string = nullptr;
  name->assign(none);
  EXPECT_STREQ(name->string(), "");
  Input* const buffer = node->createInput("b", AttrType::Buffer);
  const AttrData bytes = bufferValue(DataType::Byte, 4);
  buffer->assign(bytes);
  EXPECT_EQ(buffer->buffer().memory, bytes.payload.buffer.memory);
  buffer->assign(bufferValue(DataType::Byte, 0));
  EXPECT_EQ(buffer->buffer().count, 0U);
  EXPECT_EQ(buffer->bufferType(), DataType::Byte);
}

TEST(SceneValues, AssignOfPlainValues) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  AttrData value;
  value.type = AttrType::Bool;
  value.payload.boolean = true;
  Input* const flag = node->createInput("f", AttrType::Bool);
  flag->assign(value);
  EXPECT_TRUE(flag->boolean());
  Input* const number = node->createInput("i", AttrType::Int);
  number->assign(integer(INT64_MIN));
  EXPECT_EQ(number->integer(), INT64_MIN);
  value.type = AttrType::Real;
  value.payload.real = 2.5;
  Input* const real = node->createInput("r", AttrType::Real);
  real->assign(value);
  EXPECT_EQ(real->real(), 2.5);
  value.type = AttrType::Mat4;
  for (int i = 0; i < 16; ++i) value.payload.components[i] = i;
  Input* const matrix = node->createInput("m", AttrType::Mat4);
  matrix->assign(value);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(matrix->components()[i], i);
}

TEST(SceneValues, AssignOfAnObjectChangesNothing) {
  Scene scene;
  Input* const object = scene.createNode("open", "n", "")->createInput("o", AttrType::Object);
  object->createInput("x", AttrType::Int);
  object->assign(structure(AttrType::Object, 0));
  EXPECT_EQ(object->memberCount(), 1U);
}

// --- links ---

TEST(SceneLinks, AnyInputMayBeConnected) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  for (int value = 0; value < ATTR_TYPE_COUNT; ++value) {
    const auto type = static_cast<AttrType>(value);
    Input* const input = node->createInput(attrTypeName(type), type);
    input->connect(node->output("one"));
    input->connect(node->output("two"));
    EXPECT_EQ(input->connection(), node->output("two"));
    EXPECT_EQ(input->type(), type);
    input->disconnect();
    EXPECT_EQ(input->connection(), nullptr);
    input->disconnect();
  }
}

TEST(SceneLinks, ConnectionDoesNotChangeTheValue) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  Input* const input = node->createInput("x", AttrType::Int);
  input->assign(integer(7));
  input->connect(node->output("out"));
  EXPECT_EQ(input->integer(), 7);
  input->assign(integer(8));
  EXPECT_EQ(input->connection(), node->output("out"));
}

TEST(SceneLinks, ANodeReferenceTurnsANullInputIntoANodeInput) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  Input* const one = node->createInput("one", AttrType::Null);
  one->setNode(node);
  EXPECT_EQ(one->type(), AttrType::Node);
  EXPECT_EQ(one->node(), node);
  one->setNode(nullptr);
  EXPECT_EQ(one->type(), AttrType::Node);
  EXPECT_EQ(one->node(), nullptr);
  Input* const other = node->createInput("other", AttrType::Null);
  other->setNode(nullptr);
  EXPECT_EQ(other->type(), AttrType::Node);
}

TEST(SceneLinks, EveryOtherTypeRefusesANode) {
  Scene scene;
  Node* const node = scene.createNode("open", "n", "");
  for (int value = 1; value < ATTR_TYPE_COUNT; ++value) {
    const auto type = static_cast<AttrType>(value);
    if (type == AttrType::Node) continue;
    const std::string name = attrTypeName(type);
    Input* const input = node->createInput(attrTypeName(type), type);
    const LoggedLines log;
    input->setNode(node);
    input->setNode(nullptr);
    EXPECT_EQ(log.lines(),
              (Lines{"warning: Cannot assign node n to n." + name + " of type " + name + ".",
                     "warning: Cannot assign node null to n." + name + " of type " + name + "."}));
    EXPECT_EQ(input->type(), type);
    EXPECT_EQ(input->node(), nullptr);
  }
}

// --- memory ---

std::uintptr_t addressOf(const Input* input) {
  return reinterpret_cast<std::uintptr_t>(input);
}

// Within a slab, inputs, members and elements have ascending addresses in creation order. When a
// slab is full, the next object begins at a multiple of 256 bytes.
TEST(SceneMemory, InputsAreInCreationOrder) {
  Scene scene;
  std::vector<const Input*> inputs;
  for (unsigned long long i = 0; i < 3000; ++i) {
    Node* const node = scene.createNode("open", String("n") + String(i), "");
    Input* const object = node->createInput("o", AttrType::Object);
    inputs.push_back(object);
    inputs.push_back(object->createInput("x", AttrType::Int));
    Input* const array = node->createArray("a", AttrType::Int);
    inputs.push_back(array);
    array->appendElement();
    inputs.push_back(array->element(0));
  }
  EXPECT_EQ(addressOf(inputs[0]) % 256, 0U);
  std::size_t slabs = 1;
  for (std::size_t i = 1; i < inputs.size(); ++i) {
    if (addressOf(inputs[i]) == addressOf(inputs[i - 1]) + sizeof(InputImpl)) continue;
    ++slabs;
    EXPECT_EQ(addressOf(inputs[i]) % 256, 0U) << i;
  }
  EXPECT_LT(slabs, inputs.size() / 100);
}

TEST(SceneMemory, WarningsHaveOneOrder) {
  std::string bytes = "open n;";
  for (int i = 0; i < 300; ++i) {
    bytes += "n.i" + std::to_string(i) + " = nosuch" + std::to_string(i) + ";";
  }
  Lines first;
  for (int round = 0; round < 5; ++round) {
    Scene scene;
    const LoggedLines log;
    EXPECT_TRUE(impl::parseString(&scene, String(bytes.c_str())));
    if (round == 0) first = log.lines();
    EXPECT_EQ(log.lines(), first);
  }
  EXPECT_EQ(first.size(), 300U);
}

TEST(SceneMemory, PathsOfDeepInputsAreWhole) {
  Scene scene;
  scene.setDepthLimit(20000);
  Input* input = scene.createNode("open", "n", "")->createInput("x", AttrType::Null);
  for (int i = 0; i < 19999; ++i) input = input->createInput("x", AttrType::Null);
  EXPECT_EQ(text(input->path()).size(), 1U + 2 * 20000);
  EXPECT_EQ(input->level(), 20000U);
}

}  // namespace
}  // namespace zn::korvo_sdk
