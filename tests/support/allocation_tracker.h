// Every allocation of a program, counted, and failed on demand. The program is linked with
// -Wl,--wrap for the C functions (see CMakeLists.txt) and with replacements of operator new; both
// end at the real allocator, so that sanitizers keep seeing what they see.
//
// What counts is what the watched thread allocates between `start` and `stop`; what it frees counts
// whenever it was taken under the watch.
#pragma once

#include <cstdint>

namespace vsa_tests {

struct AllocationCount {
  /// Bytes in use now, and at most, by the sizes that the allocator really gives.
  std::int64_t liveBytes;
  std::int64_t peakBytes;
  /// Blocks in use now.
  std::int64_t liveBlocks;
  /// Calls that asked for memory, the failed ones included.
  std::uint64_t calls;
};

/// For one thread at a time.
class AllocationTracker {
 public:
  /// Begins to count on this thread, from zero.
  static void start();
  /// Ends counting. What was counted stays.
  static void stop();
  /// Goes on counting where `stop` ended, without faults.
  static void resume();
  static AllocationCount count();

  /// From now on, the n-th call (1: the next one) gets no memory; with `everAfter`, every later one
  /// neither. 0 fails none.
  static void failAt(std::uint64_t n, bool everAfter);
  /// Whether a call has been failed since the last `failAt`.
  static bool hasFailed();
};

}  // namespace vsa_tests
