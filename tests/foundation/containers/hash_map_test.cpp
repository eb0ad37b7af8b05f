// Tests of HashMap: keys are compared only by hash, and the low 8 bits of the hash select a bucket.
// Iteration goes through the buckets in order, and through each bucket in the order of insertion.
#include "foundation/containers/hash_map.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <vsa/foundation/string.h>
#include "tests/foundation/containers/tracked.h"

namespace zn::ds {
namespace {

using vsa_tests::Tracked;
class HashMapElements : public vsa_tests::TrackedTest {};

/// A key with a given hash.
struct CollidingKey {
  std::uint64_t hash;
  std::string name;
};

std::uint64_t hashOf(const CollidingKey& key) {
  return key.hash;
}

template <class K, class V>
std::vector<V> valuesOf(const HashMap<K, V>& map) {
  std::vector<V> values;
  for (const auto& bucket : map.buckets) {
    for (const auto& node : bucket) values.push_back(node.value);
  }
  return values;
}

int* address(std::uintptr_t value) {
  return reinterpret_cast<int*>(value);
}

TEST(HashMap, BucketsAreMembers) {
  using Map = HashMap<int*, int>;
  EXPECT_EQ(Map::BUCKET_COUNT, 256U);
  EXPECT_EQ(sizeof(Map::buckets), 256 * sizeof(Vector<Map::Node>));
}

TEST(HashMap, FieldsOfANodeInOrder) {
  const HashMap<int*, char>::Node node{0xAB12, address(0xAB12), 'x'};
  const auto& [hash, key, value] = node;
  static_assert(std::is_same_v<decltype(hash), const std::uint64_t>);
  static_assert(std::is_same_v<decltype(key), int* const>);
  static_assert(std::is_same_v<decltype(value), const char>);
  EXPECT_EQ(hash, 0xAB12U);
  EXPECT_EQ(key, address(0xAB12));
  EXPECT_EQ(value, 'x');
}

TEST(HashMap, FindsNothingWhileEmpty) {
  HashMap<String, int> map;
  EXPECT_EQ(map.findNode("vec3"), nullptr);
  EXPECT_EQ(map.get("vec3"), 0);
  EXPECT_EQ((&HashMap<String, int>::missing()), (&HashMap<String, int>::missing()));
  EXPECT_EQ((HashMap<String, int>::missing()), 0);
}

TEST(HashMap, SettingAKeyTwiceKeepsOneNodeWithTheSecondValue) {
  HashMap<int*, std::string> map;
  EXPECT_EQ(map.set(address(0x1200), "first"), "first");
  EXPECT_EQ(map.set(address(0x1200), "second"), "second");
  EXPECT_EQ(valuesOf(map), std::vector<std::string>{"second"});
  map.set(address(0x1200), "third") += "!";
  EXPECT_EQ(map.get(address(0x1200)), "third!");
}

enum class Kind { Null, Real };

// In a keyword table, the result for an unknown name is the enumerator with the value 0.
TEST(HashMap, MissingIsTheZeroOfAnEnumeration) {
  HashMap<String, Kind> map;
  EXPECT_EQ(map.findNode("real"), nullptr);
  EXPECT_EQ(map.get("real"), Kind::Null);
  map.set("real", Kind::Real);
  EXPECT_EQ(map.get("real"), Kind::Real);
  EXPECT_EQ(map.get("reals"), Kind::Null);
}

TEST(HashMap, SubscriptAddsADefault) {
  HashMap<int*, std::string> map;
  EXPECT_EQ(map[address(0x40)], "");
  map[address(0x40)] = "x";
  EXPECT_EQ(valuesOf(map), std::vector<std::string>{"x"});
}

TEST(HashMap, TheBucketIsTheLowEightBits) {
  HashMap<int*, int> map;
  map.set(address(0xAB12), 1);
  EXPECT_EQ(map.buckets[0x12].size, 1U);
  EXPECT_EQ(map.buckets[0x12][0].hash, 0xAB12U);
  EXPECT_EQ(map.buckets[0x12][0].key, address(0xAB12));
}

TEST(HashMap, HashesThatDifferAboveTheLowEightBitsShareABucket) {
  HashMap<int*, int> map;
  map.set(address(0x0140), 1);
  map.set(address(0x0240), 2);
  EXPECT_EQ(map.buckets[0x40].size, 2U);
  EXPECT_EQ(map.findNode(address(0x0140))->value, 1);
  EXPECT_EQ(map.findNode(address(0x0240))->value, 2);
  EXPECT_EQ(map.findNode(address(0x0340)), nullptr);
}

TEST(HashMap, KeysOfEqualHashAreOneKey) {
  HashMap<CollidingKey, int> map;
  map.set({5, "one"}, 1);
  map.set({5, "other"}, 2);
  EXPECT_EQ(valuesOf(map), std::vector<int>{2});
  EXPECT_EQ(map.buckets[5][0].key.name, "one");
  EXPECT_EQ(map.get({5, "a third"}), 2);
}

TEST(HashMap, IteratesOverBucketsInOrderAndABucketByInsertion) {
  HashMap<int*, int> map;
  map.set(address(0x1FF), 1);
  map.set(address(0x300), 2);
  map.set(address(0x240), 3);
  map.set(address(0x140), 4);
  map.set(address(0x1FF), 5);
  map.set(address(0x500), 6);
  EXPECT_EQ(valuesOf(map), (std::vector<int>{2, 6, 3, 4, 5}));
}

// A long bucket is searched through an index. The results are the same as without the index.
TEST(HashMap, LongBucketsKeepTheirOrder) {
  HashMap<int*, int> map;
  std::vector<int> expected;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(map.findNode(address(static_cast<std::uintptr_t>(i) * 256 + 8)), nullptr);
    map.set(address(static_cast<std::uintptr_t>(i) * 256 + 8), i);
    map.set(address(static_cast<std::uintptr_t>(i) * 256 + 16), -i);
    expected.push_back(i);
  }
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(map.get(address(static_cast<std::uintptr_t>(i) * 256 + 8)), i);
    EXPECT_EQ(map.get(address(static_cast<std::uintptr_t>(i) * 256 + 16)), -i);
  }
  for (int i = 0; i < 1000; ++i) expected.push_back(-i);
  EXPECT_EQ(valuesOf(map), expected);
  map.set(address(8), 77);
  EXPECT_EQ(map.buckets[8][0].value, 77);
  EXPECT_EQ(map.buckets[8].size, 1000U);
}

TEST(HashMap, ClearRemovesAllKeys) {
  HashMap<String, int> map;
  for (int i = 0; i < 3000; ++i) map.set(String(static_cast<unsigned long long>(i)), i);
  for (int i = 0; i < 3000; ++i) {
    EXPECT_EQ(map.get(String(static_cast<unsigned long long>(i))), i);
  }
  map.clear();
  EXPECT_TRUE(valuesOf(map).empty());
  EXPECT_EQ(map.findNode("7"), nullptr);
  map.set("7", 1);
  EXPECT_EQ(map.get("7"), 1);
}

// --- the lifetime of keys and values ---

/// A key with a given hash whose copies are counted.
struct TrackedKey {
  std::uint64_t hash;
  Tracked tracked;
};

std::uint64_t hashOf(const TrackedKey& key) {
  return key.hash;
}

TEST_F(HashMapElements, AreDestroyedWithTheMap) {
  {
    HashMap<TrackedKey, Tracked> map;
    for (int i = 0; i < 20; ++i) {
      map.set({static_cast<std::uint64_t>(i), Tracked()}, Tracked(i));
    }
    EXPECT_EQ(Tracked::live, 40);
  }
  EXPECT_EQ(Tracked::live, 0);
}

TEST_F(HashMapElements, AreReplacedByALaterValue) {
  HashMap<int*, Tracked> map;
  map.set(address(0x10), Tracked(1));
  const Tracked second(2);
  EXPECT_EQ(map.set(address(0x10), second).number, 2);
  EXPECT_EQ(second.number, 2);
  EXPECT_EQ(Tracked::live, 2);
  EXPECT_EQ(map.set(address(0x10), Tracked(3)).number, 3);
  EXPECT_EQ(Tracked::live, 2);
  EXPECT_EQ(map.buckets[0x10].size, 1U);
}

TEST_F(HashMapElements, OfALongBucketKeepTheirValuesAndAreDestroyedWithIt) {
  HashMap<TrackedKey, Tracked> map;
  for (int i = 0; i < 300; ++i) {
    map.set({static_cast<std::uint64_t>(i) * 256 + 7, Tracked()}, Tracked(i));
  }
  for (int i = 0; i < 300; ++i) {
    const TrackedKey key{static_cast<std::uint64_t>(i) * 256 + 7, Tracked()};
    EXPECT_EQ(map.findNode(key)->value.number, i);
    map.set(key, Tracked(i + 1000));
  }
  EXPECT_EQ(map.buckets[7].size, 300U);
  EXPECT_EQ(map.buckets[7][299].value.number, 1299);
  EXPECT_EQ(Tracked::live, 600);
  map.clear();
  EXPECT_EQ(Tracked::live, 0);
}

TEST_F(HashMapElements, ThatCannotBeCopiedAreNotAdded) {
  HashMap<int*, Tracked> map;
  map.set(address(0x10), Tracked(1));
  const Tracked more(2);
  Tracked::copiesUntilThrow = 1;
  EXPECT_THROW(map.set(address(0x110), more), std::runtime_error);
  EXPECT_EQ(map.findNode(address(0x110)), nullptr);
  Tracked::copiesUntilThrow = 1;
  EXPECT_THROW(map.set(address(0x10), more), std::runtime_error);
  EXPECT_EQ(map.findNode(address(0x10))->value.number, 1);
  EXPECT_EQ(Tracked::live, 2);
}

}  // namespace
}  // namespace zn::ds
