// What a HashMap finds through the index beside its long buckets.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "foundation/containers/hash_map.h"

namespace zn::ds {
namespace {

/// A key whose hash is chosen.
struct Key {
  std::uint64_t hash;
};

std::uint64_t hashOf(const Key& key) {
  return key.hash;
}

/// The hash whose `mixed` is `mix`.
std::uint64_t hashOfMix(std::uint64_t mix) {
  std::uint64_t hash = mix ^ mix >> 32;
  hash *= 0x9cb4b2f8129337dbULL;  // the inverses of the factors in `mixed`
  hash ^= hash >> 33;
  hash *= 0x4f74430c22a54005ULL;
  return hash ^ hash >> 33;
}

// The index of the long buckets keeps 32 bits of a hash, and no bucket: keys that agree in these
// are told apart by their nodes.
TEST(HashMapIndex, KeysThatLookAlikeStayApart) {
  const Key filed{hashOfMix(7)};
  std::vector<Key> alike;  // two of them in the bucket of `filed`, one in another
  for (std::uint64_t high = 1; alike.size() < 3; ++high) {
    const Key key{hashOfMix(high << 32 | 7)};
    ASSERT_EQ(mixed(key.hash), high << 32 | 7);
    const bool isInSameBucket = key.hash % 256 == filed.hash % 256;
    if (isInSameBucket ? alike.size() < 2 : alike.size() == 2) alike.push_back(key);
  }
  HashMap<Key, int> map;
  for (std::uint64_t i = 1; i <= 20; ++i) {
    map.set({i * 256 + filed.hash % 256}, 0);
    if (i <= 10) map.set({i * 256 + alike[2].hash % 256}, 0);
  }
  map.set(filed, 1);
  ASSERT_NE(map.findNode(filed), nullptr);
  for (const Key& key : alike) EXPECT_EQ(map.findNode(key), nullptr);
  for (int i = 0; i < 3; ++i) map.set(alike[static_cast<std::size_t>(i)], 2 + i);
  EXPECT_EQ(map.findNode(filed)->value, 1);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(map.findNode(alike[static_cast<std::size_t>(i)])->value, 2 + i);
  }
}

}  // namespace
}  // namespace zn::ds
