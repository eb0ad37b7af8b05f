// Tests that untyped elements get a type, even if the scene has removed their type before. When an
// array is filled one element at a time, each step checks only a few elements.
#include "vsa/apply/values/typed_elements.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tests/support/host_scene.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostInput;
using vsa_tests::HostOptions;

constexpr auto FLOATS = static_cast<std::int32_t>(DataType::Float);

class TypedElementsTest : public testing::Test {
 protected:
  TypedElementsTest() { array_.elements = AttrType::Buffer; }

  void growTo(std::uint64_t size) {
    while (array_.count() < size) array_.appendElement();
  }
  HostInput& element(std::uint64_t index) {
    return static_cast<HostInput&>(*array_.element(index));
  }
  /// Removes the types of all elements, as a scene may do.
  void emptyAll() {
    for (std::uint64_t i = 0; i < array_.count(); ++i) element(i).buffers = DataType::Null;
  }
  std::uint64_t emptyElements() {
    std::uint64_t sum = 0;
    for (std::uint64_t i = 0; i < array_.count(); ++i) {
      sum += element(i).buffers == DataType::Null ? 1U : 0U;
    }
    return sum;
  }
  void setEmptyElements() { typed_.setEmptyElements(array_, array_.count(), FLOATS); }

  HostOptions options_;
  HostInput array_{options_, "n.a", AttrType::Array};
  TypedElements typed_;
};

TEST_F(TypedElementsTest, EveryElementOfANewArrayIsSet) {
  growTo(300);
  setEmptyElements();
  EXPECT_EQ(emptyElements(), 0U);
}

TEST_F(TypedElementsTest, EmptyArrayIsUnchanged) {
  setEmptyElements();
  growTo(2);
  setEmptyElements();
  EXPECT_EQ(emptyElements(), 0U);
}

TEST_F(TypedElementsTest, ElementsEmptiedByTheSceneAreSetAgain) {
  for (const std::uint64_t size : {1U, 2U, 100U}) {
    growTo(size);
    setEmptyElements();
    emptyAll();
    setEmptyElements();
    EXPECT_EQ(emptyElements(), 0U);
  }
}

TEST_F(TypedElementsTest, LongArrayIsRecheckedInRotation) {
  growTo(1000);
  setEmptyElements();
  emptyAll();
  for (std::uint64_t i = 0; i < 1000; i += TypedElements::RECHECKED) setEmptyElements();
  EXPECT_EQ(emptyElements(), 0U);
}

TEST_F(TypedElementsTest, LongArrayIsNotScannedCompletely) {
  growTo(10000);
  setEmptyElements();
  emptyAll();
  growTo(10001);
  setEmptyElements();
  EXPECT_EQ(emptyElements(), 10000U - 128U);
}

TEST_F(TypedElementsTest, ArrayShrunkByTheHostIsScannedAgain) {
  growTo(1000);
  setEmptyElements();
  array_.shrinkTo(900);
  emptyAll();
  setEmptyElements();
  EXPECT_EQ(emptyElements(), 0U);
  array_.shrinkTo(0);
  growTo(900);
  setEmptyElements();
  EXPECT_EQ(emptyElements(), 0U);
}

// The argument 500 is the size of the array before the statement, so the statement has appended the
// elements from the index 500. All of them are checked, although all 1000 elements had a type at
// the last check.
TEST_F(TypedElementsTest, ElementsAppendedByTheStatementAreChecked) {
  growTo(1000);
  setEmptyElements();
  emptyAll();
  typed_.setEmptyElements(array_, 500, FLOATS);
  EXPECT_LE(emptyElements(), 500 - TypedElements::RECHECKED);
  EXPECT_EQ(element(999).buffers, DataType::Float);
}

TEST_F(TypedElementsTest, SceneShrinksTheArrayInSet) {
  growTo(10);
  options_.onCall = [this](const std::string&) { array_.shrinkTo(4); };
  setEmptyElements();
  options_.onCall = nullptr;
  EXPECT_EQ(array_.count(), 4U);
  setEmptyElements();
  EXPECT_EQ(emptyElements(), 0U);
}

// The scene removes the elements that are rechecked next.
TEST_F(TypedElementsTest, SceneShrinksTheArrayWhileElementsAreRechecked) {
  growTo(10);
  setEmptyElements();
  emptyAll();
  options_.onCall = [this](const std::string&) { array_.shrinkTo(2); };
  setEmptyElements();
  options_.onCall = nullptr;
  EXPECT_EQ(array_.count(), 2U);
  setEmptyElements();
  EXPECT_EQ(emptyElements(), 0U);
}

// The array has fewer elements than before the statement. All of them are checked again.
TEST_F(TypedElementsTest, ArrayThatCountsFewerElementsIsScannedAgain) {
  growTo(10);
  setEmptyElements();
  emptyAll();
  array_.shrinkTo(6);
  typed_.setEmptyElements(array_, 10, FLOATS);
  EXPECT_EQ(emptyElements(), 0U);
}

TEST_F(TypedElementsTest, OtherArraysAreUnchanged) {
  array_.elements = AttrType::Int;
  growTo(2);
  options_.calls.clear();
  setEmptyElements();
  EXPECT_TRUE(options_.calls.empty());
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
