// Tests that a failed allocation undoes what is constructed only in part: a file that is opened, an
// element that is appended, an input that is added to a node, an input that becomes an object, and
// a declared input that gets its element type.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <new>

#include <vsa/foundation/file.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include <vsa/scene/node_type.h>
#include "tests/support/allocation_tracker.h"

namespace vsa_tests {

namespace {

using namespace zn::korvo_sdk;
using interfaces::IInput;

/// Returns the next free file descriptor. It is the same as before if every opened file was closed.
int nextDescriptor() {
  const int descriptor = dup(STDERR_FILENO);
  close(descriptor);
  return descriptor;
}

struct Opening {
  bool hasFailed;  // whether the k-th allocation was reached
  bool isThrown;
  int descriptor;  // the next free descriptor afterwards
  std::int64_t liveBlocks;
};

/// Opens a file while the k-th allocation fails.
Opening openWithFault(std::uint64_t k) {
  Opening opening{};
  AllocationTracker::start();
  AllocationTracker::failAt(k, false);
  try {
    const zn::File file = zn::File::open("/dev/null");
  } catch (const std::bad_alloc&) {
    opening.isThrown = true;
  }
  AllocationTracker::stop();
  opening.hasFailed = AllocationTracker::hasFailed();
  opening.descriptor = nextDescriptor();
  opening.liveBlocks = AllocationTracker::count().liveBlocks;
  return opening;
}

TEST(FileMemoryTest, FileIsClosedWhenTheHandleCannotBeCreated) {
  const int descriptor = nextDescriptor();
  for (const std::uint64_t k : {1U, 2U}) {
    const Opening opening = openWithFault(k);
    EXPECT_TRUE(opening.hasFailed) << k;
    EXPECT_TRUE(opening.isThrown) << k;
    EXPECT_EQ(opening.descriptor, descriptor) << k;
    EXPECT_EQ(opening.liveBlocks, 0) << k;
  }
}

/// Appends an element while the next allocation fails. Returns whether the element was appended.
bool appendWithFault(IInput& array) {
  bool isThrown = false;
  AllocationTracker::start();
  AllocationTracker::failAt(1, false);
  try {
    array.appendElement();
  } catch (const std::bad_alloc&) {
    isThrown = true;
  }
  AllocationTracker::stop();
  EXPECT_EQ(AllocationTracker::hasFailed(), isThrown);
  return !isThrown;
}

// Only some of the calls allocate memory: the array and the scene each allocate for many elements
// at a time.
TEST(ArrayMemoryTest, FailedElementHasNoSlot) {
  Scene scene;
  ASSERT_TRUE(impl::parseString(&scene, "lamp lamp1; lamp1.keys[0] = 1;"));
  IInput* const array = scene.findNode("lamp1")->input("keys");
  std::uint64_t count = 1;
  int failures = 0;
  while (count < 5000) {
    if (!appendWithFault(*array)) {
      ++failures;
      ASSERT_EQ(array->count(), count);
      array->appendElement();
    }
    ++count;
    ASSERT_EQ(array->count(), count);
    IInput* const last = array->element(count - 1);
    ASSERT_NE(last, nullptr) << count;
    ASSERT_EQ(last->type(), AttrType::Int) << count;
  }
  EXPECT_GT(failures, 1);
}

/// Calls `what` while the k-th allocation fails. Returns whether that allocation was reached.
template <class Do>
bool failsWithoutMemory(std::uint64_t k, const Do& what) {
  bool isThrown = false;
  AllocationTracker::start();
  AllocationTracker::failAt(k, false);
  try {
    what();
  } catch (const std::bad_alloc&) {
    isThrown = true;
  }
  AllocationTracker::stop();
  EXPECT_EQ(AllocationTracker::hasFailed(), isThrown) << k;
  return isThrown;
}

// The list of the node's inputs grows in three steps: in a block of the scene, in its own block,
// and with an index.
TEST(NodeMemoryTest, FailedInputIsNotInTheList) {
  Scene scene;
  Node* const node = scene.createNode("lamp", "lamp1", zn::String());
  int failures = 0;
  for (std::uint64_t count = 0; count < 1200; ++count) {
    const zn::String name(static_cast<unsigned long long>(count));
    std::uint64_t k = 0;
    while (failsWithoutMemory(++k, [&] { node->createInput(name, AttrType::Int); })) {
      ++failures;
      ASSERT_EQ(node->inputCount(), count);
    }
    ASSERT_EQ(node->inputCount(), count + 1);
    ASSERT_TRUE(node->inputAt(count)->name() == name) << count;
    ASSERT_EQ(node->input(name), node->inputAt(count)) << count;
  }
  EXPECT_GT(failures, 3);
}

// An input that was used only in a link gets its type with its first value or member.
TEST(MemberMemoryTest, FailedMemberCreatesNoObject) {
  std::uint64_t k = 0;
  bool isRefused = true;
  while (isRefused) {
    Scene scene;
    ASSERT_TRUE(impl::parseString(&scene, "lamp lamp1; lamp1.rig |= lamp1.out;"));
    Input* const rig = scene.findNode("lamp1")->input("rig");
    const zn::String name("keys");
    isRefused = failsWithoutMemory(++k, [&] { rig->createArray(name, AttrType::Int); });
    EXPECT_EQ(rig->type(), isRefused ? AttrType::Null : AttrType::Object) << k;
    EXPECT_EQ(rig->memberCount(), isRefused ? 0U : 1U) << k;
  }
  EXPECT_GT(k, 2U);
}

// A declared input is created with its declared element type, or not at all.
TEST(DeclaredMemoryTest, FailedBufferIsCreatedCompletelyOrNotAtAll) {
  NodeType type;
  type.name = "half_made_lamp";
  type.inputs = {
      {.name = "profile", .type = AttrType::Buffer, .bufferType = DataType::Float},
      {.name = "stops", .type = AttrType::Array, .elementType = AttrType::Real},
  };
  registerNodeType(type);
  for (const char* const name : {"profile", "stops"}) {
    std::uint64_t k = 0;
    bool isRefused = true;
    while (isRefused) {
      Scene scene;
      Node* const node = scene.createNode("half_made_lamp", "lamp1", zn::String());
      const zn::String sought(name);
      isRefused = failsWithoutMemory(++k, [&] { node->input(sought); });
      EXPECT_EQ(node->inputCount(), isRefused ? 0U : 1U) << name << ' ' << k;
      const Input* const input = node->input(sought);
      const bool isBuffer = input->type() == AttrType::Buffer;
      EXPECT_EQ(input->bufferType(), isBuffer ? DataType::Float : DataType::Null) << k;
      EXPECT_EQ(input->elementType(), isBuffer ? AttrType::Null : AttrType::Real) << k;
    }
    EXPECT_GT(k, 3U);
  }
  unregisterNodeType("half_made_lamp");
}

}  // namespace

}  // namespace vsa_tests
