// The tables that the reader makes on first use, when there is no memory for them: the reading that
// asked for them fails and leaves nothing behind, and the next one makes them. They are made once a
// process, so each fault gets a process of its own, from this program, which itself reads nothing.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/support/allocation_tracker.h"

namespace vsa_tests {

namespace {

using namespace zn::korvo_sdk;

class SilentSink final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String&) override {}
};

struct Outcome {
  bool hasFailed;         // there was a k-th allocation
  bool isReadAfterwards;  // the second reading went well
  std::int64_t keptBlocks;
};

/// Reads with the k-th allocation failing (0: none), and once more without a fault.
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
    // It left the entry point, as promised.
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

/// The same in a process of its own; `isAnswered` false when that process died.
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

TEST(FirstUseTest, TablesAreMadeAgainAndNothingIsLeftOfTheFirstTry) {
  // How many buckets a table fills depends on the key of the hash: one for all processes.
  ASSERT_NE(zn::String("key").hash(), 0u);
  bool isAnswered = false;
  const Outcome sound = readTwiceInChild(0, isAnswered);
  ASSERT_TRUE(isAnswered && sound.isReadAfterwards);
  std::uint64_t faults = 0;
  for (std::uint64_t k = 1;; ++k) {
    const Outcome outcome = readTwiceInChild(k, isAnswered);
    ASSERT_TRUE(isAnswered) << "allocation " << k;
    if (!outcome.hasFailed) break;
    ++faults;
    EXPECT_TRUE(outcome.isReadAfterwards) << "allocation " << k;
    // The payload of the one statement that the fault ended may be let go.
    EXPECT_LE(outcome.keptBlocks, sound.keptBlocks + 1) << "allocation " << k;
  }
  EXPECT_GT(faults, 100u) << "the tables had been made before";
}

}  // namespace

}  // namespace vsa_tests
