// Counts the allocations of a program and makes chosen ones fail. The program is linked with
// -Wl,--wrap for the C functions (vsa_track_allocations in tests/CMakeLists.txt) and with
// replacements of operator new. Both call the real allocator, so sanitizers work as usual.
//
// Only calls on the tracked thread between `start` and `stop` count. A block that is freed while
// tracking is assumed to have been allocated while tracking.
#pragma once

#include <cstdint>

namespace vsa_tests {

struct AllocationCount {
  /// Bytes in use, and their maximum. A block counts with the size that the allocator reserves for
  /// it.
  std::int64_t liveBytes;
  std::int64_t peakBytes;
  /// Blocks in use.
  std::int64_t liveBlocks;
  /// Calls that requested memory, including failed ones.
  std::uint64_t calls;
};

/// Tracks one thread at a time.
class AllocationTracker {
 public:
  /// Starts counting on this thread, from zero.
  static void start();
  /// Stops counting. The counts remain.
  static void stop();
  /// Continues counting after `stop`, without failures.
  static void resume();
  static AllocationCount count();

  /// Makes the n-th following call (1: the next one) fail, and if `everAfter` is set all later
  /// calls, too. 0: no call fails.
  static void failAt(std::uint64_t n, bool everAfter);
  /// Whether a call has failed since the last `failAt`.
  static bool hasFailed();
};

}  // namespace vsa_tests
