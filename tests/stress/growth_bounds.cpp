// What a text may cost: time, heap and stack, in proportion to its size, for every family of nasty
// texts. One line a family:
//
//   family                             MB/s  growth  heap/text  declared  stack
//
// MB/s is that of the largest size, in processor time, reading and destroying together. Growth is
// t(4n)/t(n), the worst of the sizes that took long enough to measure. Both are those of reads that
// find the memory which they ask for in the process, which has it handed out before: what that
// takes is not the reader's, and depends on what the allocator keeps. Heap is the
// most that was in use while reading (the text included), over the text's size; declared is the
// size of the buffers that the text names, over the text's size. Stack is what reading, dumping and
// destroying needed.
//
//   proportion                all families, 1 to 64 MiB
//   proportion --quick        1 MiB only; heap and stack are checked, speed is not
//   proportion --file         reads from a File
//   proportion --only TEXT    families with TEXT in their name
//   proportion --huge         texts beyond 2 and 4 GiB instead; see huge_text.h
//   proportion --percent N    N hundredths of each size: what grows by doubling is worst just after
//
// Every size runs in a process of its own: one that dies is a line, not the end.
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/stress/huge_text.h"
#include "tests/stress/stack_usage.h"
#include "tests/stress/texts/stress_texts.h"
#include "tests/support/allocation_tracker.h"
#include "tests/support/byte_source.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

namespace {

constexpr std::size_t MIB = std::size_t{1} << 20;
constexpr double SLOWEST = 5e6;         // bytes per second
constexpr double STEEPEST = 5.0;        // t(4n)/t(n)
constexpr double MEASURABLE = 0.020;    // seconds
constexpr double GIVE_UP = 30.0;        // seconds for one size; larger ones are not tried
constexpr double HEAP_BASE = 64 * MIB;  // bytes
constexpr double HEAP_PER_BYTE = 100;
constexpr std::size_t STACK_LIMIT = 64 * 1024;
constexpr std::size_t DUMPED = 4 * MIB;  // larger texts are not dumped
constexpr rlim_t MEMORY_LIMIT = rlim_t{14} << 30;

struct Options {
  bool quick = false;
  bool fromFile = false;
  bool huge = false;
  std::string only;
  std::size_t percent = 100;
};

/// What one text cost.
struct Cost {
  double seconds;
  std::uint64_t textBytes;
  std::uint64_t heapBytes;
  std::uint64_t declaredBytes;
  std::uint64_t stackBytes;
};

/// Looks at every message and keeps none.
class SilentSink final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String&) override {}
};

// Has the system hand out so much memory, if it can. The allocator gives nothing of it back.
void fetchPages(std::size_t bytes) {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, -1);
  constexpr std::size_t PAGE_BYTES = 4096;
  char* const memory = static_cast<char*>(std::malloc(bytes));
  // Volatile, or the compiler sees that nobody reads it.
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
    // A bad character among the first tokens, or no memory: it ends the reading like any error.
  }
}

double timedRun(const zn::String& text, bool fromFile) {
  const double start = threadSeconds();
  {
    zn::korvo_sdk::Scene scene;
    readInto(scene, text, fromFile);
  }
  return threadSeconds() - start;
}

long pagesHandedOut() {
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

// The median of several runs of a short text, but for those that the system had to hand out pages
// for all the same.
double medianSeconds(const zn::String& text, bool fromFile) {
  constexpr int MOST_RUNS = 12;
  constexpr std::size_t ENOUGH = 9;
  constexpr double LONG_ENOUGH = 2.0;  // seconds for all of them
  constexpr long FEW_PAGES = 64;
  std::vector<double> counted;
  double seconds = 0;
  double all = 0;
  for (int i = 0; i < MOST_RUNS && counted.size() < ENOUGH; ++i) {
    const long before = pagesHandedOut();
    seconds = timedRun(text, fromFile);
    all += seconds;
    if (pagesHandedOut() - before <= FEW_PAGES) counted.push_back(seconds);
    if (all > LONG_ENOUGH && (!counted.empty() || i >= 2)) break;
  }
  if (counted.empty()) return seconds;
  std::sort(counted.begin(), counted.end());
  return (counted[(counted.size() - 1) / 2] + counted[counted.size() / 2]) / 2;
}

void readAndDump(const zn::String& text, const Options& options, std::FILE* nowhere) {
  zn::korvo_sdk::Scene scene;
  readInto(scene, text, options.fromFile);
  if (text.len() > DUMPED + MIB) return;
  vsa_tools::TextOutput out(nowhere);
  vsa_tools::dumpJson({}, scene, out);
  vsa_tools::dumpCase({}, scene, out);
}

Cost costOf(const Family& family, std::size_t bytes, const Options& options) {
  Cost cost{};
  zn::String text;
  {
    const NastyText made = family.make(bytes);
    text = zn::String::copyOf(made.text);
    cost.declaredBytes = made.declaredBytes;
  }
  cost.textBytes = text.len();
  SilentSink silent;
  zn::setLogSink(&silent);
  std::FILE* const nowhere = std::fopen("/dev/null", "wb");
  cost.stackBytes = stackUsedBy([&] {
    AllocationTracker::start();
    readAndDump(text, options, nowhere);
    AllocationTracker::stop();
    cost.heapBytes = static_cast<std::uint64_t>(AllocationTracker::count().peakBytes) + text.len();
  });
  std::fclose(nowhere);
  if (options.quick) return cost;
  fetchPages(cost.heapBytes / 2 * 3);
  cost.seconds = medianSeconds(text, options.fromFile);
  return cost;
}

// The same in a process of its own; nothing when that process did not come back with an answer.
std::optional<Cost> costOfInChild(const Family& family, std::size_t bytes, const Options& options,
                                  int& status) {
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
    const Cost cost = costOf(family, bytes, options);
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

/// One line, and what is wrong with it.
class Line {
 public:
  Line(const Family& family, const Options& options) : family_(family), options_(options) {}

  bool run() {
    const std::vector<std::size_t> sizes =
        options_.quick ? std::vector<std::size_t>{1} : std::vector<std::size_t>{1, 4, 16, 64};
    for (const std::size_t size : sizes) {
      int status = 0;
      const std::optional<Cost> cost =
          costOfInChild(family_, size * MIB / 100 * options_.percent, options_, status);
      if (!cost) {
        wrong_ +=
            " died at " + std::to_string(size) + " MiB (status " + std::to_string(status) + ")";
        break;
      }
      add(*cost);
      if (cost->seconds > GIVE_UP) break;
    }
    print();
    return wrong_.empty();
  }

 private:
  void add(const Cost& cost) {
    const auto text = static_cast<double>(cost.textBytes);
    const auto heap = static_cast<double>(cost.heapBytes);
    const auto declared = static_cast<double>(cost.declaredBytes);
    if (!costs_.empty() && costs_.back().seconds > MEASURABLE) {
      // Of texts that grew by something else than 4, what 4 would have made of it.
      const double grown = text / static_cast<double>(costs_.back().textBytes);
      growth_ = std::max(growth_, cost.seconds / costs_.back().seconds * 4 / grown);
    }
    heapOverText_ = std::max(heapOverText_, heap / text);
    stack_ = std::max(stack_, static_cast<std::size_t>(cost.stackBytes));
    if (heap > HEAP_BASE + HEAP_PER_BYTE * text + declared) {
      wrong_ += " heap " + std::to_string(static_cast<std::uint64_t>(heap / MIB)) + " MiB";
    }
    costs_.push_back(cost);
  }

  void print() {
    if (growth_ > STEEPEST) wrong_ += " grows too fast";
    if (stack_ > STACK_LIMIT) wrong_ += " needs too much stack";
    double speed = 0;
    double declared = 0;
    if (!costs_.empty()) {
      const Cost& last = costs_.back();
      const auto text = static_cast<double>(last.textBytes);
      declared = static_cast<double>(last.declaredBytes) / text;
      if (last.seconds > 0) speed = text / last.seconds;
      if (last.seconds > MEASURABLE && speed < SLOWEST) wrong_ += " too slow";
    }
    std::printf("%-44s %9.1f %7.2f %10.1f %9.1f %7zu%s%s\n", family_.name, speed / 1e6, growth_,
                heapOverText_, declared, stack_, wrong_.empty() ? "" : "  FAILS:", wrong_.c_str());
    std::fflush(stdout);
  }

  const Family& family_;
  const Options& options_;
  std::vector<Cost> costs_;
  double growth_ = 0;
  double heapOverText_ = 0;
  std::size_t stack_ = 0;
  std::string wrong_;
};

std::optional<Options> optionsFrom(int count, char** arguments) {
  Options options;
  for (int i = 1; i < count; ++i) {
    const std::string argument = arguments[i];
    if (argument == "--quick") {
      options.quick = true;
    } else if (argument == "--file") {
      options.fromFile = true;
    } else if (argument == "--huge") {
      options.huge = true;
    } else if (argument == "--only" && i + 1 < count) {
      options.only = arguments[++i];
    } else if (argument == "--percent" && i + 1 < count) {
      options.percent = std::strtoul(arguments[++i], nullptr, 10);
    } else {
      return {};
    }
  }
  return options;
}

int runAll(const Options& options) {
  std::printf("%-44s %9s %7s %10s %9s %7s\n", "family", "MB/s", "growth", "heap/text", "declared",
              "stack");
  int ran = 0;
  int failed = 0;
  for (const Family& family : families()) {
    if (std::strstr(family.name, options.only.c_str()) == nullptr) continue;
    ++ran;
    if (!Line(family, options).run()) ++failed;
  }
  std::printf("%d families, %d out of proportion\n", ran, failed);
  return failed == 0 ? 0 : 1;
}

}  // namespace

}  // namespace vsa_tests

int main(int argumentCount, char** arguments) {
  const auto options = vsa_tests::optionsFrom(argumentCount, arguments);
  if (!options) {
    std::fprintf(stderr,
                 "usage: proportion [--quick] [--file] [--huge] [--only TEXT] [--percent N]\n");
    return 2;
  }
  return options->huge ? vsa_tests::readHugeTexts() : vsa_tests::runAll(*options);
}
