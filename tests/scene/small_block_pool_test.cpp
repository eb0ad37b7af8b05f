// Tests of the pool for the short lists, tuples and strings of a scene.
#include "scene/model/storage/small_block_pool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <string>

#include <vsa/model/scene.h>
#include <vsa/parse.h>

namespace zn::korvo_sdk {
namespace {

TEST(SmallBlockPool, BlocksAreAlignedAndDisjoint) {
  SmallBlockPool pool;
  std::set<std::uintptr_t> ends;
  for (std::size_t bytes = 1; bytes <= SmallBlockPool::MAX_BYTES; bytes += 7) {
    void* const block = pool.allocate(bytes);
    std::memset(block, 0x5A, bytes);
    const auto at = reinterpret_cast<std::uintptr_t>(block);
    EXPECT_EQ(at % 8, 0U);
    const auto next = ends.upper_bound(at);
    EXPECT_TRUE(next == ends.end() || *next >= at + SmallBlockPool::capacityFor(bytes)) << bytes;
    ends.insert(at + SmallBlockPool::capacityFor(bytes));
  }
}

TEST(SmallBlockPool, DeallocatedBlockIsReused) {
  SmallBlockPool pool;
  void* const first = pool.allocate(17);
  void* const second = pool.allocate(17);
  pool.deallocate(first, 17);
  EXPECT_NE(pool.allocate(25), first);
  EXPECT_EQ(pool.allocate(24), first);
  EXPECT_NE(pool.allocate(24), second);
}

// Many strings of the same length that are assigned to one input use at most two blocks. Most of
// the lengths fill a block, or need the next larger one.
TEST(SmallBlockPool, RepeatedAssignmentReusesTheBlock) {
  for (const std::size_t length : {1, 7, 8, 11, 15, 16, 63, 64}) {
    Scene scene;
    ASSERT_TRUE(impl::parseString(&scene, "note n; n.text = \"the first one\";"));
    Input* const text = scene.findNode("n")->input("text");
    std::set<const char*> places;
    for (int i = 0; i < 260; ++i) {
      const std::string value(length, static_cast<char>('a' + i % 26));
      ASSERT_TRUE(impl::parseString(&scene, String::copyOf("n.text = \"" + value + "\";")));
      EXPECT_EQ(text->string(), value);
      places.insert(text->string());
    }
    EXPECT_LE(places.size(), 2U) << length;
  }
}

TEST(SmallBlockPool, StringsOfManyLengthsAreKept) {
  Scene scene;
  std::string text = "note n;\n";
  for (std::size_t length = 0; length < 9000; length += 257) {
    text += "n.t" + std::to_string(length) + " = \"" + std::string(length, 'a') + "\";\n";
  }
  ASSERT_TRUE(impl::parseString(&scene, String::copyOf(text)));
  for (std::size_t length = 0; length < 9000; length += 257) {
    Input* const input = scene.findNode("n")->input(("t" + std::to_string(length)).c_str());
    ASSERT_NE(input, nullptr);
    EXPECT_EQ(std::string(input->string()), std::string(length, 'a'));
  }
}

}  // namespace
}  // namespace zn::korvo_sdk
