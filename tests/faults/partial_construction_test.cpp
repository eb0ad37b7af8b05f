// A failed allocation undoes a partial construction: the handle of a file being opened, the slot of
// an element being appended, an input being given a structure.
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

/// The next file descriptor of this process. It is the same again when every opened file is closed.
int nextDescriptor() {
  const int descriptor = dup(STDERR_FILENO);
  close(descriptor);
  return descriptor;
}

struct Opening {
  bool hasFailed;  // there was a k-th allocation
  bool isThrown;
  int descriptor;  // at the end
  std::int64_t liveBlocks;
};

/// Opens a file with the k-th allocation failing.
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

/// Appends an element with the next allocation failing. Returns whether the element was appended.
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

// The array and the scene each allocate capacity for many elements at a time.
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

/// Calls `what` with the k-th allocation failing. Returns whether that allocation was reached.
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

// The list of a node's inputs first grows in a block of the scene, then in its own block, and has
// an index.
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

// An input that only a link has used gets its type from its first value or member.
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

// A declared input exists with its declared element type, or not at all.
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
