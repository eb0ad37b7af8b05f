// Reads the texts of stressTexts() in growing sizes and measures the time, the heap and the stack.
// Prints one line for each stress text. Fails if a bound is exceeded. The columns are:
//
//   MB/s       speed of reading and destroying the scene at the largest size, in processor time
//   growth     the greatest t(4n)/t(n), where t(n) is the time to read a text of n bytes;
//              times that are too short to be measured do not count
//   heap/text  peak heap for reading and dumping, with the text, divided by the size of the text
//   declared   size of the buffers that the text declares, divided by the size of the text
//   stack      bytes of stack for reading, dumping and destroying
//
// The scenes of texts of more than 5 MiB are not dumped.
//
// The time normally includes few page faults, because the process gets the necessary memory from
// the system before the reads. Page faults would take as long as the reading, and their number
// depends on the allocator.
//
// Each size is read in its own process, so that a crash fails only one stress text.
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/stress/huge_text.h"
#include "tests/stress/stack_usage.h"
#include "tests/stress/texts/stress_texts.h"
#include "tests/support/allocation_tracker.h"
#include "tests/support/byte_source.h"
#include "tests/support/silent_sink.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

namespace {

constexpr std::size_t MIB = std::size_t{1} << 20;
// The bounds of the measurements.
constexpr double MIN_SPEED = 5e6;  // in bytes per second
constexpr double MAX_GROWTH = 5;   // t(4n)/t(n)
// The peak heap must not exceed MAX_HEAP_BASE + MAX_HEAP_PER_BYTE * text size + declared buffers.
constexpr double MAX_HEAP_BASE = 64 * MIB;
constexpr double MAX_HEAP_PER_BYTE = 100;
constexpr std::size_t MAX_STACK = 64 * 1024;

constexpr double MIN_SECONDS = 0.020;  // shorter times are not compared
constexpr double MAX_SECONDS = 30;     // after a size that takes longer, no larger size is read
constexpr std::size_t MAX_DUMPED = 4 * MIB;
constexpr rlim_t MEMORY_LIMIT = rlim_t{14} << 30;

struct Options {
  bool quick = false;
  bool fromFile = false;
  bool huge = false;
  std::string only;
  std::size_t percent = 100;
};

/// The measured costs of reading one text.
struct Cost {
  double seconds;
  std::uint64_t textBytes;
  std::uint64_t heapBytes;
  std::uint64_t declaredBytes;
  std::uint64_t stackBytes;
};

// Makes the allocator request `bytes` bytes from the system and keep them. Does nothing if there is
// not that much memory.
void prefaultMemory(std::size_t bytes) {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, -1);
  constexpr std::size_t PAGE_BYTES = 4096;
  char* const memory = static_cast<char*>(std::malloc(bytes));
  // The compiler must not remove the writes, so the memory is volatile.
  volatile char* const pages = memory;
  for (std::size_t at = 0; memory != nullptr && at < bytes; at += PAGE_BYTES) pages[at] = 1;
  std::free(memory);
}

double threadSeconds() {
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void readInto(zn::korvo_sdk::Scene& scene, const zn::String& text, bool fromFile) {
  using namespace zn::korvo_sdk::impl;
  try {
    if (fromFile) {
      parseVsa(&scene, memoryFile(std::string(text.view())), true);
    } else {
      parseString(&scene, text);
    }
  } catch (const std::exception&) {
    // The reading throws if the first three tokens of the text contain an invalid character, or if
    // there is no memory. The time of such a reading counts, too.
  }
}

double timedRead(const zn::String& text, bool fromFile) {
  const double start = threadSeconds();
  {
    zn::korvo_sdk::Scene scene;
    readInto(scene, text, fromFile);
  }
  return threadSeconds() - start;
}

long pageFaults() {
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

// Returns the median time of several reads. Reads with many page faults do not count. If all have
// many, returns the time of the last one.
double medianSeconds(const zn::String& text, bool fromFile) {
  constexpr int MAX_READS = 12;
  constexpr std::size_t MAX_COUNTED = 9;
  constexpr double MAX_TOTAL_SECONDS = 2;
  constexpr long MAX_PAGE_FAULTS = 64;
  std::vector<double> counted;
  double seconds = 0;
  double total = 0;
  for (int i = 0; i < MAX_READS && counted.size() < MAX_COUNTED; ++i) {
    const long before = pageFaults();
    seconds = timedRead(text, fromFile);
    total += seconds;
    if (pageFaults() - before <= MAX_PAGE_FAULTS) counted.push_back(seconds);
    if (total > MAX_TOTAL_SECONDS && (!counted.empty() || i >= 2)) break;
  }
  if (counted.empty()) return seconds;
  std::sort(counted.begin(), counted.end());
  return (counted[(counted.size() - 1) / 2] + counted[counted.size() / 2]) / 2;
}

void readAndDump(const zn::String& text, const Options& options, std::FILE* sink) {
  zn::korvo_sdk::Scene scene;
  readInto(scene, text, options.fromFile);
  if (text.len() > MAX_DUMPED + MIB) return;
  vsa_tools::TextOutput out(sink);
  vsa_tools::dumpJson({}, scene, out);
  vsa_tools::dumpCase({}, scene, out);
}

Cost costOf(const StressText& stressText, std::size_t bytes, const Options& options) {
  Cost cost{};
  zn::String text;
  {
    const GeneratedText generated = stressText.make(bytes);
    text = zn::String::copyOf(generated.text);
    cost.declaredBytes = generated.declaredBytes;
  }
  cost.textBytes = text.len();
  SilentSink silent;
  zn::setLogSink(&silent);
  std::FILE* const devNull = std::fopen("/dev/null", "wb");
  cost.stackBytes = stackUsedBy([&] {
    AllocationTracker::start();
    readAndDump(text, options, devNull);
    AllocationTracker::stop();
    cost.heapBytes = static_cast<std::uint64_t>(AllocationTracker::count().peakBytes) + text.len();
  });
  std::fclose(devNull);
  if (options.quick) return cost;
  prefaultMemory(cost.heapBytes / 2 * 3);
  cost.seconds = medianSeconds(text, options.fromFile);
  return cost;
}

// Measures the cost in a child process and sets `status` to its wait status. Returns nothing if the
// child ended without an answer, for example by a crash.
std::optional<Cost> costOfInChild(const StressText& stressText, std::size_t bytes,
                                  const Options& options, int& status) {
  int ends[2];
  if (pipe(ends) != 0) return {};
  const pid_t child = fork();
  if (child == 0) {
    close(ends[0]);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    const rlimit memory{MEMORY_LIMIT, MEMORY_LIMIT};
    setrlimit(RLIMIT_AS, &memory);
#endif
    const rlimit processor{300, 300};
    setrlimit(RLIMIT_CPU, &processor);
    const Cost cost = costOf(stressText, bytes, options);
    const bool written = write(ends[1], &cost, sizeof cost) == sizeof cost;
    _exit(written ? 0 : 1);
  }
  close(ends[1]);
  Cost cost;
  const bool isAnswered = read(ends[0], &cost, sizeof cost) == sizeof cost;
  close(ends[0]);
  waitpid(child, &status, 0);
  return isAnswered ? std::optional<Cost>(cost) : std::nullopt;
}

/// The measurements of one stress text, and the bounds that they exceed.
class Measurement {
 public:
  Measurement(const StressText& stressText, const Options& options)
      : stressText_(stressText), options_(options) {}

  bool run() {
    const std::vector<std::size_t> sizes =
        options_.quick ? std::vector<std::size_t>{1} : std::vector<std::size_t>{1, 4, 16, 64};
    for (const std::size_t size : sizes) {
      int status = 0;
      const std::optional<Cost> cost =
          costOfInChild(stressText_, size * MIB / 100 * options_.percent, options_, status);
      if (!cost) {
        failures_ +=
            " died at " + std::to_string(size) + " MiB (status " + std::to_string(status) + ")";
        break;
      }
      add(*cost);
      if (cost->seconds > MAX_SECONDS) break;
    }
    print();
    return failures_.empty();
  }

 private:
  void add(const Cost& cost) {
    const auto text = static_cast<double>(cost.textBytes);
    const auto heap = static_cast<double>(cost.heapBytes);
    const auto declared = static_cast<double>(cost.declaredBytes);
    if (!costs_.empty() && costs_.back().seconds > MIN_SECONDS) {
      // The growth is scaled to a factor of 4, because sizes do not grow by exactly 4.
      const double factor = text / static_cast<double>(costs_.back().textBytes);
      growth_ = std::max(growth_, cost.seconds / costs_.back().seconds * 4 / factor);
    }
    heapOverText_ = std::max(heapOverText_, heap / text);
    stack_ = std::max(stack_, static_cast<std::size_t>(cost.stackBytes));
    if (heap > MAX_HEAP_BASE + MAX_HEAP_PER_BYTE * text + declared) {
      failures_ += " heap " + std::to_string(static_cast<std::uint64_t>(heap / MIB)) + " MiB";
    }
    costs_.push_back(cost);
  }

  void print() {
    if (growth_ > MAX_GROWTH) failures_ += " grows too fast";
    if (stack_ > MAX_STACK) failures_ += " needs too much stack";
    double speed = 0;
    double declared = 0;
    if (!costs_.empty()) {
      const Cost& last = costs_.back();
      const auto text = static_cast<double>(last.textBytes);
      declared = static_cast<double>(last.declaredBytes) / text;
      if (last.seconds > 0) speed = text / last.seconds;
      if (last.seconds > MIN_SECONDS && speed < MIN_SPEED) failures_ += " too slow";
    }
    std::printf("%-44s %9.1f %7.2f %10.1f %9.1f %7zu%s%s\n", stressText_.name, speed / 1e6, growth_,
                heapOverText_, declared, stack_,
                failures_.empty() ? "" : "  FAILS:", failures_.c_str());
    std::fflush(stdout);
  }

  const StressText& stressText_;
  const Options& options_;
  std::vector<Cost> costs_;
  double growth_ = 0;
  double heapOverText_ = 0;
  std::size_t stack_ = 0;
  std::string failures_;
};

int runAll(const Options& options) {
  std::printf("%-44s %9s %7s %10s %9s %7s\n", "stress text", "MB/s", "growth", "heap/text",
              "declared", "stack");
  int ran = 0;
  int failed = 0;
  for (const StressText& stressText : stressTexts()) {
    if (std::strstr(stressText.name, options.only.c_str()) == nullptr) continue;
    ++ran;
    if (!Measurement(stressText, options).run()) ++failed;
  }
  std::printf("%d stress texts, %d exceed a bound\n", ran, failed);
  return failed == 0 ? 0 : 1;
}

}  // namespace

}  // namespace vsa_tests

int main(int argumentCount, char** arguments) {
  vsa_tests::Options options;
  CLI::App app("Measures the cost of reading the stress texts and checks its bounds.",
               "growth_bounds");
  app.add_flag("--quick", options.quick, "Read 1 MiB only; check heap and stack, but not speed");
  app.add_flag("--file", options.fromFile, "Read from a File instead of a String");
  app.add_option("--only", options.only, "Read the stress texts with TEXT in their name")
      ->type_name("TEXT");
  app.add_flag("--huge", options.huge, "Read texts of more than 2 and 4 GiB instead");
  app.add_option("--percent", options.percent,
                 "Read N percent of each size; memory that grows by doubling is worst just after a "
                 "power of two")
      ->type_name("N");
  CLI11_PARSE(app, argumentCount, arguments);
  return options.huge ? vsa_tests::readHugeTexts() : vsa_tests::runAll(options);
}
