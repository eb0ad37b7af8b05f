// Tests of pending links: the table has one entry for each input, and its filter has no false
// negatives.
#include "vsa/apply/links/pending_link.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/host_scene.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostInput;
using vsa_tests::HostOptions;
using Lines = std::vector<std::string>;

void setLink(PendingTable& table, HostInput& input, std::string_view node) {
  table.setLink(&input, node, String());
}

/// Returns the sources of all entries for `input` in a table.
Lines sourcesOf(const PendingTable& table, const HostInput& input) {
  Lines sources;
  for (const auto& bucket : table.buckets) {
    for (const auto& entry : bucket) {
      if (entry.key == &input) sources.emplace_back(entry.value.source);
    }
  }
  return sources;
}

// An entry must be small, because a text may contain millions of links. The position of the link in
// the text takes 8 bytes of the entry.
static_assert(sizeof(TextPlace) == 8);
static_assert(sizeof(PendingLink) <= 24);

TEST(PendingTableTest, AnInputHasOneEntryAndIsRetainedOnce) {
  HostOptions options;
  HostInput input(options, "n.a", AttrType::Null);
  PendingTable table;
  setLink(table, input, "first");
  EXPECT_EQ(sourcesOf(table, input), Lines{"first"});
  EXPECT_EQ(input.held, 1);
  setLink(table, input, "second");
  setLink(table, input, "third");
  EXPECT_EQ(sourcesOf(table, input), Lines{"third"});
  EXPECT_EQ(input.held, 1);
  EXPECT_EQ(options.calls, Lines{"n.a.retain"});
}

TEST(PendingTableTest, EachTableRetainsTheInput) {
  HostOptions options;
  HostInput input(options, "n.a", AttrType::Null);
  PendingTable connections;
  PendingTable references;
  setLink(connections, input, "c");
  setLink(references, input, "r");
  EXPECT_EQ(sourcesOf(connections, input), Lines{"c"});
  EXPECT_EQ(sourcesOf(references, input), Lines{"r"});
  EXPECT_EQ(input.held, 2);
}

// The filter of the table must not miss an earlier entry of an input, whatever the order in which
// the addresses of the inputs are added.
TEST(PendingTableTest, ManyInputsInAMixedOrder) {
  HostOptions options;
  std::deque<HostInput> inputs;
  for (int i = 0; i < 2000; ++i) {
    inputs.emplace_back(options, "n.a" + std::to_string(i), AttrType::Null);
  }
  PendingTable table;
  for (std::size_t round = 0; round < 3; ++round) {
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      const std::size_t at = i * 701 % inputs.size();
      setLink(table, inputs[at], round == 2 ? "last" : "earlier");
    }
  }
  std::uint64_t entries = 0;
  for (const auto& bucket : table.buckets) entries += bucket.size;
  EXPECT_EQ(entries, inputs.size());
  EXPECT_EQ(options.calls.size(), inputs.size()) << "one retain for each input";
  for (const HostInput& input : inputs) {
    ASSERT_EQ(sourcesOf(table, input), Lines{"last"});
    ASSERT_EQ(input.held, 1);
  }
}

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
