// Tests of the interface for C when memory runs out. A reading is then null, or it has the status
// for missing memory, which vsa_reading_status() also returns for null. The path of an input is
// then empty.
#include <gtest/gtest.h>
#include <vsa/vsa_c.h>

#include <string>
#include <string_view>

#include "tests/support/allocation_tracker.h"

namespace vsa_tests {

namespace {

constexpr std::string_view TEXT = "lamp aNodeWithALongNameThatTakesMemory: .x = 1; .s = \"text\";";

// Calls `change` while its `n`-th allocation and all later ones fail. Returns whether `change` made
// at least `n` allocations.
template <class Change>
bool failsAt(std::uint64_t n, const Change& change) {
  AllocationTracker::start();
  AllocationTracker::failAt(n, true);
  change();
  const bool hasFailed = AllocationTracker::hasFailed();
  AllocationTracker::failAt(0, false);
  AllocationTracker::stop();
  return hasFailed;
}

TEST(CMemory, ThatRunsOutIsAStatus) {
  for (std::uint64_t n = 1;; ++n) {
    vsa_reading* reading = nullptr;
    const bool hasFailed =
        failsAt(n, [&] { reading = vsa_read_text(TEXT.data(), TEXT.size(), nullptr); });
    EXPECT_EQ(vsa_reading_status(reading), hasFailed ? VSA_OUT_OF_MEMORY : VSA_COMPLETE) << n;
    vsa_free(reading);
    if (!hasFailed) break;
  }
}

TEST(CMemory, ThatRunsOutGivesAnEmptyPath) {
  vsa_reading* const reading = vsa_read_text(TEXT.data(), TEXT.size(), nullptr);
  const vsa_input* const input = vsa_input_at(vsa_first_node(reading), 0);
  char path[8] = "before";
  std::size_t length = 1;
  EXPECT_TRUE(failsAt(1, [&] { length = vsa_input_path(input, path, sizeof path); }));
  EXPECT_EQ(length, 0U);
  EXPECT_STREQ(path, "");
  vsa_free(reading);
}

}  // namespace

}  // namespace vsa_tests
