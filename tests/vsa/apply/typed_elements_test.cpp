// What is remembered of the elements of an array: it spares looking at them, and never hides one
// that a host has changed.
#include "vsa/apply/typed_elements.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/support/host_scene.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostInput;

class TypedElementsTest : public testing::Test {
 protected:
  void grow(int count) {
    for (; count > 0; --count) array_.appendElement();
  }

  /// Where the look at the elements has to begin, when the last one known is typed or is not.
  std::uint64_t unknown(bool isTyped = true) {
    return typed_.firstUnknown(&array_, [&](interfaces::IInput& element) {
      EXPECT_EQ(&element, lastKnown_);
      return isTyped;
    });
  }

  void remember() {
    typed_.remember(&array_);
    lastKnown_ = array_.element(array_.count() - 1);
  }

  vsa_tests::HostOptions options_;
  HostInput array_{options_, "n.a", AttrType::Array};
  TypedElements typed_;
  interfaces::IInput* lastKnown_ = nullptr;
};

TEST_F(TypedElementsTest, OfANewArrayNothingIsKnown) {
  EXPECT_EQ(unknown(), 0U);
  grow(3);
  EXPECT_EQ(unknown(), 0U);
}

TEST_F(TypedElementsTest, ThoseRememberedAreKnown) {
  for (const int more : {1, 1, 3}) {
    grow(more);
    remember();
    EXPECT_EQ(unknown(), array_.count());
  }
  grow(2);
  EXPECT_EQ(unknown(), 5U);
  HostInput other(options_, "n.b", AttrType::Array);
  EXPECT_EQ(typed_.firstUnknown(&other, [](interfaces::IInput&) { return true; }), 0U);
}

TEST_F(TypedElementsTest, AnEmptyArrayLeavesWhatWasKnownOfIt) {
  typed_.remember(&array_);
  EXPECT_EQ(unknown(), 0U);
  grow(2);
  EXPECT_EQ(unknown(), 0U);
}

TEST_F(TypedElementsTest, AnArrayThatAHostHasCutIsUnknown) {
  grow(3);
  remember();
  array_.shrinkTo(2);
  EXPECT_EQ(unknown(), 0U);
  array_.shrinkTo(0);
  EXPECT_EQ(unknown(), 0U);
}

TEST_F(TypedElementsTest, AndOneWhoseLastKnownElementIsAnotherOrHasLostItsType) {
  grow(3);
  remember();
  EXPECT_EQ(unknown(false), 0U);
  options_.losesElements = true;
  EXPECT_EQ(unknown(), 0U);
  options_.losesElements = false;
  EXPECT_EQ(unknown(), 3U);
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
