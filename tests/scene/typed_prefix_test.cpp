// Tests of the typed prefix of an array: the number of leading elements that have a type. The scene
// stores it, so that many short texts that append to an array do not check all its elements again.
// If an element loses its type, the next text gives it a type again.
#include "scene/library_scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <utility>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/support/silent_sink.h"

namespace zn::korvo_sdk {
namespace {

AttrData structureOf(AttrType type, std::int32_t elementType) {
  AttrData data;
  data.type = type;
  data.elementType = elementType;
  return data;
}

AttrData untypedBuffer() {
  return structureOf(AttrType::Buffer, static_cast<std::int32_t>(DataType::Null));
}

class TypedPrefix : public testing::Test {
 protected:
  TypedPrefix() { setLogSink(&silent_); }
  ~TypedPrefix() override { setLogSink(nullptr); }

  void read(const std::string& text) { impl::parseString(&scene_, String::copyOf(text)); }

  /// Returns the array n.a with `count` buffers. Each buffer is appended by its own text.
  Input& arrayOf(int count) {
    read("t n;");
    for (int i = 0; i < count; ++i) read("with n: .a[*] = byte[1] {1};");
    return *scene_.findNode("n")->input("a");
  }

  static Input& element(Input& array, std::uint64_t index) {
    return static_cast<Input&>(*array.element(index));
  }

  vsa_tests::SilentSink silent_;
  Scene scene_;
};

TEST_F(TypedPrefix, GrowsWithTheTypedElements) {
  Input& array = arrayOf(20);
  EXPECT_EQ(typedPrefixOf(array), 20U);
  array.appendElement();
  EXPECT_EQ(typedPrefixOf(array), 20U);
  array.element(20)->set(structureOf(AttrType::Buffer, static_cast<std::int32_t>(DataType::Byte)));
  EXPECT_EQ(typedPrefixOf(array), 21U);
}

TEST_F(TypedPrefix, IsZeroForOtherInputs) {
  arrayOf(1);
  read("with n: .x = 1; .v[*] = 1; .e |= null;");
  for (const char* const name : {"x", "e"}) {
    EXPECT_EQ(typedPrefixOf(*scene_.findNode("n")->input(name)), 0U) << name;
  }
}

TEST_F(TypedPrefix, OfAnArrayOfNumbersIsItsCount) {
  read("t n: .v[1] = 1;");
  Input& array = *scene_.findNode("n")->input("v");
  EXPECT_EQ(typedPrefixOf(array), 2U);
  array.truncate(0);
  EXPECT_EQ(typedPrefixOf(array), 0U);
  array.clearValue();
  array.set(structureOf(AttrType::Array, static_cast<std::int32_t>(AttrType::Int)));
  EXPECT_EQ(typedPrefixOf(array), 0U);
}

/// A change that a host makes to an array of ten buffers, and the prefix after it.
struct Change {
  const char* name;
  std::function<void(Input& array)> apply;
  std::uint64_t prefix;
};

const Change CHANGES[] = {
    {"an element loses its value",
     [](Input& array) { static_cast<Input*>(array.element(4))->clearValue(); }, 4},
    {"a buffer loses its type", [](Input& array) { array.element(6)->set(untypedBuffer()); }, 6},
    {"a buffer without a type is assigned",
     [](Input& array) { array.element(3)->assign(untypedBuffer()); }, 3},
    {"elements are removed", [](Input& array) { array.truncate(7); }, 7},
    {"elements are removed and appended",
     [](Input& array) {
       array.truncate(5);
       while (array.count() < 10) array.appendElement();
     },
     5},
    {"a removed element is cleared",
     [](Input& array) {
       auto* const last = static_cast<Input*>(array.element(9));
       array.truncate(9);
       last->clearValue();
     },
     9},
    {"the array gets another element type and its own again",
     [](Input& array) {
       const auto buffer = static_cast<std::int32_t>(AttrType::Buffer);
       array.element(2)->set(untypedBuffer());
       array.set(structureOf(AttrType::Array, static_cast<std::int32_t>(AttrType::Int)));
       EXPECT_EQ(typedPrefixOf(array), 10U);  // in an array of Int, no element counts as untyped
       array.set(structureOf(AttrType::Array, buffer));
     },
     2},
    {"the array is cleared", [](Input& array) { array.clearValue(); }, 0},
};

TEST_F(TypedPrefix, EndsAtTheFirstElementThatLostItsType) {
  for (const Change& change : CHANGES) {
    scene_.removeNode("n");
    Input& array = arrayOf(10);
    ASSERT_EQ(typedPrefixOf(array), 10U);
    change.apply(array);
    EXPECT_EQ(typedPrefixOf(array), change.prefix) << change.name;
  }
}

TEST_F(TypedPrefix, ArraysInAnArrayLoseTheTypeOfTheirElements) {
  read("t n: .a[3][0] = 1;");
  Input& array = static_cast<Input&>(*scene_.findNode("n")->input("a"));
  const auto setElements = [&](std::uint64_t index, AttrType type) {
    array.element(index)->set(structureOf(AttrType::Array, static_cast<std::int32_t>(type)));
  };
  for (std::uint64_t i = 0; i < array.count(); ++i) setElements(i, AttrType::Int);
  EXPECT_EQ(typedPrefixOf(array), 4U);
  setElements(1, AttrType::Null);
  EXPECT_EQ(typedPrefixOf(array), 1U);
}

// A host changes elements at random between the texts. After each text, all buffers of the array
// have a type.
TEST_F(TypedPrefix, TextsSetWhateverHostsEmpty) {
  std::mt19937 random(7);
  Input& array = arrayOf(40);
  for (int round = 0; round < 500; ++round) {
    const std::uint64_t index = random() % array.count();
    switch (random() % 4) {
      case 0:
        element(array, index).clearValue();
        break;
      case 1:
        array.element(index)->set(untypedBuffer());
        break;
      case 2:
        array.truncate(std::max<std::uint64_t>(index, 10));
        break;
      default:
        array.appendElement();
        break;
    }
    read("with n: .a[*] = byte[1] {1};");
    for (std::uint64_t i = 0; i < array.count(); ++i) {
      ASSERT_EQ(array.element(i)->bufferType(), DataType::Byte) << "round " << round << ", " << i;
    }
  }
}

// A node removes only its own inputs, and an input only its own members.
TEST(InputRemoval, IgnoresInputsOfOthers) {
  Scene scene;
  impl::parseString(&scene, String("t n; n.o.p = 1; n.v[1] = 2; n.q.r = 3;"));
  Node& node = *scene.findNode("n");
  Input& object = *node.input("o");
  auto* const member = static_cast<Input*>(object.input("p"));
  Input& array = *node.input("v");
  auto* const last = static_cast<Input*>(array.element(1));
  node.removeInput(member);
  node.removeInput(last);
  array.removeMember(last);
  node.input("q")->removeMember(member);
  EXPECT_EQ(object.memberCount(), 1U);
  EXPECT_EQ(member->integer(), 1);
  EXPECT_EQ(array.count(), 2U);
  EXPECT_EQ(last->integer(), 2);
}

}  // namespace
}  // namespace zn::korvo_sdk
