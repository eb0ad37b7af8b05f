// Tests of HashIndex: insertions, removals and collisions, compared with a multimap.
#include "foundation/containers/hash_index.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <stdexcept>

namespace zn::ds {
namespace {

constexpr auto ANY = [](std::uint64_t) { return true; };

TEST(HashIndex, FindsNothingWhileEmpty) {
  HashIndex index;
  EXPECT_EQ(index.find(1, ANY), HashIndex::NONE);
  index.erase(1, 0);
  index.shiftPositionsAbove(0);
  EXPECT_EQ(index.size(), 0U);
}

TEST(HashIndex, TheOwnerDistinguishesEqualHashes) {
  HashIndex index;
  for (std::uint64_t position = 0; position < 100; ++position) index.insert(42, position);
  EXPECT_EQ(index.size(), 100U);
  for (std::uint64_t position = 0; position < 100; ++position) {
    EXPECT_EQ(index.find(42, [&](std::uint64_t i) { return i == position; }), position);
  }
  EXPECT_EQ(index.find(42, [](std::uint64_t) { return false; }), HashIndex::NONE);
}

TEST(HashIndex, RemovesOnlyWhatWasInserted) {
  HashIndex index;
  index.insert(1, 10);
  index.insert(1, 11);
  index.erase(1, 12);
  index.erase(2, 10);
  EXPECT_EQ(index.size(), 2U);
  index.erase(1, 10);
  EXPECT_EQ(index.find(1, ANY), 11U);
  EXPECT_EQ(index.size(), 1U);
}

TEST(HashIndex, RefusesPositionsBeyondThirtyTwoBits) {
  HashIndex index;
  EXPECT_THROW(index.insert(1, 0xFFFFFFFFU), std::length_error);
  index.insert(1, 0xFFFFFFFEU);
  EXPECT_EQ(index.find(1, ANY), 0xFFFFFFFEU);
}

TEST(HashIndex, AgreesWithAMultimap) {
  std::mt19937 random(7);
  HashIndex index;
  std::multimap<std::uint64_t, std::uint64_t> plain;
  std::uint64_t next = 0;
  for (int step = 0; step < 20000; ++step) {
    const std::uint64_t hash = random() % 64 * 256;  // like addresses, and often equal
    if (random() % 3 != 0 || plain.empty()) {
      index.insert(hash, next);
      plain.emplace(hash, next++);
    } else if (const auto at = plain.lower_bound(hash); at != plain.end()) {
      index.erase(at->first, at->second);
      plain.erase(at);
    }
  }
  ASSERT_EQ(index.size(), plain.size());
  for (const auto& [hash, position] : plain) {
    const std::uint64_t sought = position;
    ASSERT_EQ(index.find(hash, [&](std::uint64_t i) { return i == sought; }), sought);
  }
}

}  // namespace
}  // namespace zn::ds
