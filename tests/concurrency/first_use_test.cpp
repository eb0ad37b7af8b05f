// Tests of allocation failures while the reader initialises its tables on first use. A read in
// which an allocation fails leaks at most one buffer, and the next read initialises the tables that
// are still missing. Tables are initialised once in a process. Therefore each failure is tested in
// a child process, and the parent process reads nothing.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/support/allocation_tracker.h"
#include "tests/support/silent_sink.h"

namespace vsa_tests {

namespace {

using namespace zn::korvo_sdk;

struct Outcome {
  bool hasFailed;         // whether the k-th allocation was reached
  bool isReadAfterwards;  // whether the second read succeeded
  std::int64_t keptBlocks;
};

/// Reads while the k-th allocation fails, then reads again without a failure. If `k` is 0, no
/// allocation fails.
Outcome readTwice(std::uint64_t k) {
  const zn::String text(
      "t n; n.v = vec3(1 2 3); n.b = int32[1] {1}; n.c = vec3f[1] {1 2 3}; n.r = n; n.l |= n.o;");
  Outcome outcome{};
  SilentSink sink;
  const zn::ScopedLogSink scope(&sink);
  AllocationTracker::start();
  AllocationTracker::failAt(k, false);
  try {
    Scene scene;
    impl::parseString(&scene, text);
  } catch (const std::bad_alloc&) {
    // The documentation allows this exception.
  }
  outcome.hasFailed = AllocationTracker::hasFailed();
  AllocationTracker::failAt(0, false);
  {
    Scene scene;
    outcome.isReadAfterwards = impl::parseString(&scene, text);
  }
  AllocationTracker::stop();
  outcome.keptBlocks = AllocationTracker::count().liveBlocks;
  return outcome;
}

/// Calls readTwice() in a child process. `isAnswered` becomes false if that process crashed.
Outcome readTwiceInChild(std::uint64_t k, bool& isAnswered) {
  int ends[2];
  if (pipe(ends) != 0) return {};
  const pid_t child = fork();
  if (child == 0) {
    const Outcome outcome = readTwice(k);
    const bool isWritten = write(ends[1], &outcome, sizeof outcome) == sizeof outcome;
    _exit(isWritten ? 0 : 1);
  }
  close(ends[1]);
  Outcome outcome{};
  isAnswered = read(ends[0], &outcome, sizeof outcome) == sizeof outcome;
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return outcome;
}

TEST(FirstUseTest, TablesAreInitialisedAfterAFailureWithoutLeaks) {
  // Initialises the hash key in this process. With different keys, the child processes would have
  // tables of different sizes.
  ASSERT_NE(zn::String("key").hash(), 0u);
  bool isAnswered = false;
  const Outcome reference = readTwiceInChild(0, isAnswered);
  ASSERT_TRUE(isAnswered && reference.isReadAfterwards);
  std::uint64_t failures = 0;
  for (std::uint64_t k = 1;; ++k) {
    const Outcome outcome = readTwiceInChild(k, isAnswered);
    ASSERT_TRUE(isAnswered) << "allocation " << k;
    if (!outcome.hasFailed) break;
    ++failures;
    EXPECT_TRUE(outcome.isReadAfterwards) << "allocation " << k;
    // A buffer leaks if its statement fails before the scene takes ownership of it. A buffer is one
    // block.
    EXPECT_LE(outcome.keptBlocks, reference.keptBlocks + 1) << "allocation " << k;
  }
  EXPECT_GT(failures, 100u) << "the tables were initialised before";
}

}  // namespace

}  // namespace vsa_tests
