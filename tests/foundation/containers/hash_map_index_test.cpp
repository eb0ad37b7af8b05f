// Tests of the index that a HashMap has for its long buckets.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "foundation/containers/hash_map.h"

namespace zn::ds {
namespace {

/// A key with a given hash.
struct Key {
  std::uint64_t hash;
};

std::uint64_t hashOf(const Key& key) {
  return key.hash;
}

/// Returns the hash for which mixed() returns `mix`.
std::uint64_t hashOfMix(std::uint64_t mix) {
  std::uint64_t hash = mix ^ mix >> 32;
  hash *= 0x9cb4b2f8129337dbULL;  // each factor is the inverse of one in mixed()
  hash ^= hash >> 33;
  hash *= 0x4f74430c22a54005ULL;
  return hash ^ hash >> 33;
}

// The index stores only a tag of 32 bits for each key. Keys with equal tags must still be
// distinguished.
TEST(HashMapIndex, KeysWithEqualTagsAreDistinguished) {
  const Key stored{hashOfMix(7)};
  std::vector<Key> sameTag;  // two keys in the bucket of `stored`, and one in another bucket
  for (std::uint64_t high = 1; sameTag.size() < 3; ++high) {
    const Key key{hashOfMix(high << 32 | 7)};
    ASSERT_EQ(mixed(key.hash), high << 32 | 7);
    const bool isInSameBucket = key.hash % 256 == stored.hash % 256;
    if (isInSameBucket ? sameTag.size() < 2 : sameTag.size() == 2) sameTag.push_back(key);
  }
  HashMap<Key, int> map;
  for (std::uint64_t i = 1; i <= 20; ++i) {
    map.set({i * 256 + stored.hash % 256}, 0);
    if (i <= 10) map.set({i * 256 + sameTag[2].hash % 256}, 0);
  }
  map.set(stored, 1);
  ASSERT_NE(map.findNode(stored), nullptr);
  for (const Key& key : sameTag) EXPECT_EQ(map.findNode(key), nullptr);
  for (int i = 0; i < 3; ++i) map.set(sameTag[static_cast<std::size_t>(i)], 2 + i);
  EXPECT_EQ(map.findNode(stored)->value, 1);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(map.findNode(sameTag[static_cast<std::size_t>(i)])->value, 2 + i);
  }
}

}  // namespace
}  // namespace zn::ds
