// The address filter of the pending links: no false negatives.
#include "vsa/apply/pending_link.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zn::korvo_sdk::impl {
namespace {

const void* at(std::uintptr_t address) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): never dereferenced
  return reinterpret_cast<const void*>(address);
}

TEST(AddressFilterTest, EmptyFilterContainsNoAddress) {
  const AddressFilter filter;
  EXPECT_FALSE(filter.mayContain(at(0)));
  EXPECT_FALSE(filter.mayContain(at(0x7000'0000)));
}

TEST(AddressFilterTest, AddressesAboveTheHighestOfAPageAreNotContained) {
  AddressFilter filter;
  filter.add(at(0x1'2000));
  filter.add(at(0x1'1000));
  EXPECT_TRUE(filter.mayContain(at(0x1'1000)));
  EXPECT_TRUE(filter.mayContain(at(0x1'2000)));
  EXPECT_FALSE(filter.mayContain(at(0x1'2001)));
  EXPECT_FALSE(filter.mayContain(at(0x1'ffff)));
  EXPECT_FALSE(filter.mayContain(at(0x2'0000)));
  EXPECT_FALSE(filter.mayContain(at(0x0'ffff)));
}

TEST(AddressFilterTest, HasNoFalseNegatives) {
  AddressFilter filter;
  std::vector<std::uintptr_t> added;
  std::uint64_t state = 1;
  for (int i = 0; i < 20000; ++i) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    added.push_back(static_cast<std::uintptr_t>(state >> 40));
    filter.add(at(added.back()));
  }
  for (const std::uintptr_t address : added) EXPECT_TRUE(filter.mayContain(at(address)));
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
