// Tests of String::adopt with failing allocations: nothing leaks. If adopt() throws, the caller
// still owns the characters.
#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>

#include <vsa/foundation/string.h>
#include "tests/support/allocation_tracker.h"
#include "tests/support/text.h"

namespace zn {
namespace {

using vsa_tests::AllocationTracker;
using vsa_tests::text;

/// The result of adopting 100 characters in a block of `capacity` bytes while the k-th allocation
/// fails.
struct Adoption {
  bool hasFailed = false;  // whether the k-th allocation was reached
  bool isThrown = false;
  std::string adopted;
  std::string left;
  std::int64_t liveBlocks = 0;  // the number of allocated blocks at the end
};

Adoption adoptWithFault(unsigned long capacity, std::uint64_t k) {
  Adoption adoption;
  AllocationTracker::start();
  {
    ds::Vector<char> chars;
    chars.reserve(capacity);
    for (int i = 0; i < 100; ++i) chars.push_back('x');
    AllocationTracker::failAt(k, false);
    String adopted;
    try {
      adopted = String::adopt(std::move(chars));
    } catch (const std::bad_alloc&) {
      adoption.isThrown = true;
    }
    AllocationTracker::stop();
    adoption.hasFailed = AllocationTracker::hasFailed();
    adoption.adopted = text(adopted);
    adoption.left = std::string(chars.begin(), chars.end());  // NOLINT: it may still contain them
    AllocationTracker::resume();
  }
  AllocationTracker::stop();
  adoption.liveBlocks = AllocationTracker::count().liveBlocks;
  return adoption;
}

const std::string CHARS(100, 'x');

// The block of 200 bytes has room for the NUL after the 100 characters, so it need not grow.
// Therefore the first allocation is for the header of the String, and the second one makes the
// block smaller.
TEST(StringMemory, HeaderAllocationFails) {
  const Adoption adoption = adoptWithFault(200, 1);
  EXPECT_TRUE(adoption.hasFailed);
  EXPECT_TRUE(adoption.isThrown);
  EXPECT_EQ(adoption.adopted, "");
  EXPECT_EQ(adoption.left.substr(0, 100), CHARS);
  EXPECT_EQ(adoption.liveBlocks, 0);
}

TEST(StringMemory, FailedShrinkKeepsTheExcess) {
  const Adoption adoption = adoptWithFault(200, 2);
  EXPECT_TRUE(adoption.hasFailed);
  EXPECT_FALSE(adoption.isThrown);
  EXPECT_EQ(adoption.adopted, CHARS);
  EXPECT_EQ(adoption.left, "");
  EXPECT_EQ(adoption.liveBlocks, 0);
}

TEST(StringMemory, AllocationForTheNulFails) {
  const Adoption adoption = adoptWithFault(100, 1);
  EXPECT_TRUE(adoption.hasFailed);
  EXPECT_TRUE(adoption.isThrown);
  EXPECT_EQ(adoption.left, CHARS);
  EXPECT_EQ(adoption.liveBlocks, 0);
}

TEST(StringMemory, AllAllocationsSucceed) {
  for (const unsigned long capacity : {100UL, 101UL, 200UL}) {
    const Adoption adoption = adoptWithFault(capacity, 4);
    EXPECT_FALSE(adoption.hasFailed) << capacity;
    EXPECT_EQ(adoption.adopted, CHARS) << capacity;
    EXPECT_EQ(adoption.left, "") << capacity;
    EXPECT_EQ(adoption.liveBlocks, 0) << capacity;
  }
}

}  // namespace
}  // namespace zn
