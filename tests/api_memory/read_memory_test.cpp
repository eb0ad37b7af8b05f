// Tests of the memory of readings through the public API. All memory is freed for any text, even if
// an allocation fails. LeakSanitizer runs this program without suppressions.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/allocation_tracker.h"
#include "tests/support/case_run.h"
#include "tests/support/disk_file.h"
#include "tests/support/text.h"

namespace vsa_tests {

namespace {

using vsa::ReadResult;
using vsa::ReadStatus;

// Texts with values that no input receives. Each text fails in a different way.
const std::string FAULTY[] = {
    "a x; x.n = 1; x.n = \"refused\"; x.n = byte[100] {1}; x.n = \"last\"",
    "a x; x.n = \"no semicolon, and long enough to be no short string\" 5;",
    "a x; gone.n = \"no such node, and long enough to be no short string\";",
    "a x; gone.b = byte[100] {1 2 3};",
    "a x; x.b = byte[2] {1 2 3};",
    "a x; x.b = byte[4] {.00};",
    "a x; x.b = float[4] {1 1e};",
    "a x; x.v[0] = 1; x.v[1] = \"not a number, and long enough to be no short string\";",
};

// Initialises the tables that are created on first use and never freed. The tests must not count
// their memory.
void warmUp() {
  declareLamp();
  static_cast<void>(vsa::readText("a x; x.b = byte[1] {1}; x.v = vec2(1 2); define y;"));
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool IS_SANITIZED = true;
#else
constexpr bool IS_SANITIZED = false;
#endif

std::uint64_t residentBytes() {
  std::uint64_t total = 0;
  std::uint64_t resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

std::string faultyText(std::size_t bytes) {
  std::string text = "a x;\nx.n = 1;\n";
  while (text.size() < bytes) {
    text += "x.n = \"" + std::string(200, 's') + "\";\nx.n = byte[300] {1};\nx.o = x;\n";
  }
  return text + "x.b = byte[2] {1 2 3};";
}

TEST(ReadMemory, OfEveryCaseIsFreed) {
  warmUp();
  for (const Case& one : findCases(VSA_CASE_DIR).cases) {
    const std::string text = contentOf(one.text);
    const std::string path = one.text.string();
    for (const bool isFile : {false, true}) {
      AllocationTracker::start();
      static_cast<void>(isFile ? vsa::readFile(path.c_str()) : vsa::readText(text));
      AllocationTracker::stop();
      EXPECT_EQ(AllocationTracker::count().liveBlocks, 0) << one.name;
    }
  }
}

TEST(ReadMemory, OfValuesThatNoInputTookIsFreed) {
  warmUp();
  for (const std::string& text : FAULTY) {
    AllocationTracker::start();
    static_cast<void>(vsa::readText(text));
    AllocationTracker::stop();
    EXPECT_EQ(AllocationTracker::count().liveBlocks, 0) << text;
  }
}

TEST(ReadMemory, StaysAsItWasOverManyFaultyReads) {
  warmUp();
  const std::string text = faultyText(100'000);
  vsa::Scene scene;
  static_cast<void>(vsa::readTextInto(scene, text));
  AllocationTracker::start();
  for (int i = 0; i < 100; ++i) static_cast<void>(vsa::readText(text));
  for (int i = 0; i < 10'000; ++i) static_cast<void>(vsa::readText(FAULTY[i % 8]));
  AllocationTracker::stop();
  EXPECT_EQ(AllocationTracker::count().liveBlocks, 0);
  EXPECT_EQ(AllocationTracker::count().liveBytes, 0);
}

// The test measures the memory of the whole process. Sanitizers keep freed blocks, so that the
// growth is tested only without them.
TEST(ReadMemory, OfTheProcessStaysAsItWasOverManyFaultyReads) {
  warmUp();
  const std::string text = faultyText(10'000);
  const auto readMany = [&](int times) {
    for (int i = 0; i < times; ++i) static_cast<void>(vsa::readText(text));
  };
  readMany(200);
  const std::uint64_t before = residentBytes();
  readMany(IS_SANITIZED ? 100 : 10'000);
  const std::uint64_t growth = residentBytes() - std::min(before, residentBytes());
  if (!IS_SANITIZED) {
    EXPECT_LT(growth, 1'000'000U);
  }
  EXPECT_GT(before, 0U);
}

TEST(ReadMemory, OfARefusedValueIsFreedBeforeTheNextStatement) {
  warmUp();
  std::string text = "a x; x.n = 1;\n";
  for (int i = 0; i < 50; ++i) text += "x.n = byte[1000000] {1};\n";
  AllocationTracker::start();
  static_cast<void>(vsa::readText(text));
  AllocationTracker::stop();
  EXPECT_LT(AllocationTracker::count().peakBytes, 3'000'000);
}

// Calls `read` twice for each allocation that it makes: once that allocation fails alone, and once
// together with all later allocations. Expects that nothing leaks. Passes the number of the
// allocation, the status, and whether the result has a message to `check`.
template <class Read, class Check>
void failEachAllocation(const Read& read, const Check& check) {
  for (const bool everAfter : {false, true}) {
    for (std::uint64_t n = 1;; ++n) {
      ReadStatus status = ReadStatus::Complete;
      bool hasMessage = false;
      AllocationTracker::start();
      AllocationTracker::failAt(n, everAfter);
      {
        const ReadResult result = read();
        status = result.status;
        hasMessage = !result.message.empty();
      }
      const bool hasFailed = AllocationTracker::hasFailed();
      AllocationTracker::stop();
      EXPECT_EQ(AllocationTracker::count().liveBlocks, 0) << n;
      if (!hasFailed) break;
      check(n, status, hasMessage);
    }
  }
}

std::string varied() {
  return "# version: x\na x: .s = \"" + std::string(80, 's') +
         "\"; .b = byte[9] {1}; .v[3] = 1; .r = x; .n = 1; .n = 2.5; .n = "
         "\"no\"; .c |= y.z;";
}

void expectOutOfMemory(std::uint64_t n, ReadStatus status, bool /*hasMessage*/) {
  EXPECT_EQ(status, ReadStatus::OutOfMemory) << n;
}

TEST(ReadMemory, ThatRunsOutIsAStatus) {
  warmUp();
  const std::string text = varied();
  failEachAllocation([&] { return vsa::readText(text); }, expectOutOfMemory);
}

TEST(ReadMemory, ThatRunsOutIsAStatusForAFile) {
  warmUp();
  const DiskFile file(varied());
  const std::string path = file.path();
  failEachAllocation([&] { return vsa::readFile(path.c_str()); }, expectOutOfMemory);
}

// The status is OutOfMemory, with one exception: if only the memory for the message is missing, it
// is StoppedByError, and the message is empty.
TEST(ReadMemory, ThatRunsOutIsAStatusForAnError) {
  warmUp();
  const std::string text = varied() + "gone.x=1;";
  failEachAllocation([&] { return vsa::readText(text); },
                     [](std::uint64_t n, ReadStatus status, bool hasMessage) {
                       if (hasMessage || status != ReadStatus::StoppedByError) {
                         EXPECT_EQ(status, ReadStatus::OutOfMemory) << n;
                       }
                     });
}

// A reading with a limit of 2 MB takes less than 5 MB. The limit does not count all memory.
TEST(ReadMemory, StaysWithinItsLimit) {
  warmUp();
  std::string nodes;
  std::string inputs = "a x:\n";
  std::string elements = "a x:\n";
  std::string links = "a x:\n";
  std::string warnings;
  for (int i = 0; i < 100'000; ++i) {
    const std::string number = std::to_string(i);
    nodes += "a n" + number + ";\n";
    inputs += ".i" + number + "=1;\n";
    elements += ".v[*]=1;\n";
    links += ".i" + number + "=x;\n";
    warnings += "# version: x\n";
  }
  for (const std::string& text : {nodes, inputs, elements, links, warnings}) {
    vsa::ReadOptions options;
    options.limits.memory = 2'000'000;
    options.keptDiagnostics = vsa::UNLIMITED;
    AllocationTracker::start();
    ReadStatus status = ReadStatus::Complete;
    {
      const ReadResult result = vsa::readText(text, options);
      status = result.status;
    }
    AllocationTracker::stop();
    EXPECT_EQ(status, ReadStatus::OverLimit) << text.substr(0, 30);
    EXPECT_LT(AllocationTracker::count().peakBytes, 5'000'000) << text.substr(0, 30);
  }
}

// Each message would contain the long name of the node. A message that is not kept is not created.
TEST(ReadMemory, IsNotTakenForDiagnosticsThatAreNotKept) {
  warmUp();
  std::string text = "lamp " + std::string(1'000'000, 'n') + ": .k = 1;\n";
  for (int i = 0; i < 500; ++i) text += ".k = 2.5;\n.k = \"no\";\n.b = byte[9000000000] {1};\n";
  for (const std::uint64_t kept : {std::uint64_t{0}, vsa::UNLIMITED}) {
    vsa::ReadOptions options;
    options.keptDiagnostics = kept;
    options.keptDiagnosticBytes = 10'000'000;
    AllocationTracker::start();
    std::uint64_t found = 0;
    {
      const ReadResult result = vsa::readText(text, options);
      found = result.errorCount + result.warningCount;
    }
    AllocationTracker::stop();
    EXPECT_EQ(found, 1500U);
    EXPECT_LT(AllocationTracker::count().calls, 2 * found) << kept;
  }
}

}  // namespace

}  // namespace vsa_tests
