// AllocationTracker: counts the allocations of a program and makes some of them fail. The program
// is linked with -Wl,--wrap for the C functions (vsa_track_allocations in tests/CMakeLists.txt) and
// with replacements of operator new. Both call the real allocator, so sanitizers work as usual.
//
// Only calls between start() and stop() on the tracked thread count. A block that is freed during
// that time is assumed to have been allocated during that time.
#pragma once

#include <cstdint>

namespace vsa_tests {

struct AllocationCount {
  /// The bytes in use, and their maximum. The size of a block is the size that the allocator
  /// reserves for it.
  std::int64_t liveBytes;
  std::int64_t peakBytes;
  /// The number of blocks in use.
  std::int64_t liveBlocks;
  /// The number of calls that requested memory, including failed calls.
  std::uint64_t calls;
};

/// Tracks the allocations of one thread at a time.
class AllocationTracker {
 public:
  /// Sets the counts to zero and starts counting on this thread.
  static void start();
  /// Stops counting. The counts keep their values.
  static void stop();
  /// Continues counting after stop(). No call fails.
  static void resume();
  static AllocationCount count();

  /// Makes the n-th of the following calls fail. 1 is the next call, and 0 makes no call fail. If
  /// `everAfter` is true, all later calls fail, too.
  static void failAt(std::uint64_t n, bool everAfter);
  /// Returns whether a call was made to fail since the last call of failAt(), start() or resume().
  static bool hasFailed();
};

}  // namespace vsa_tests
