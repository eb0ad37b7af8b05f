// Whole reads of every scene and size, from a String and from a File: read/geo/50MB/string.
//
// Counters: bytes, numbers and statements a second, allocations a statement, and the peak of
// resident memory over the input's size (of a File's read the input is not in memory). The scene is
// destroyed outside of the time.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>

#include "bench/allocation_count.h"
#include "bench/memory.h"
#include "bench/our_reader.h"

namespace bench {
namespace {

struct SceneRow {
  const char* name;
  const char* size;
  Text (*make)(size_t, Format, uint64_t);
  size_t amount;
};

constexpr SceneRow SCENES[] = {
    {"geo", "5MB", geo, 5'000'000},
    {"geo", "50MB", geo, 50'000'000},
    {"geo", "250MB", geo, 250'000'000},
    {"nodes", "10k", nodes, 10'000},
    {"nodes", "100k", nodes, 100'000},
    {"nodes", "1M", nodes, 1'000'000},
    {"links", "1k", links, 1'000},
    {"links", "10k", links, 10'000},
    {"links", "100k", links, 100'000},
    {"links", "1M", links, 1'000'000},
    {"text", "1MB", text, 1'000'000},
    {"text", "20MB", text, 20'000'000},
    {"compressed", "20MB", compressed, 20'000'000},
};

std::string scratchFile() {
  const char* const folder = std::getenv("VSA_BENCH_SCRATCH");
  return std::string(folder != nullptr ? folder : "/tmp") + "/vsa_bench.vsa";
}

// The scene at hand, in memory and on file; the benchmarks of one scene follow each other.
class Workplace {
 public:
  const Text& sceneOf(const SceneRow& row) {
    if (current == &row) return vsa;
    vsa = row.make(row.amount, Format::Vsa, 1);
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr || std::fwrite(vsa.text.data(), 1, vsa.text.size(), file) == 0 ||
        std::fclose(file) != 0) {
      throw std::runtime_error("cannot write " + path);
    }
    current = &row;
    return vsa;
  }

  const std::string path = scratchFile();

 private:
  const SceneRow* current = nullptr;
  Text vsa;
};

Workplace& workplace() {
  static Workplace place;
  return place;
}

void report(benchmark::State& state, const Text& vsa, size_t allocations, size_t peak) {
  const auto rate = benchmark::Counter::kIsIterationInvariantRate;
  const auto count = static_cast<double>(state.iterations());
  const auto statements = static_cast<double>(vsa.expected.statements);
  state.SetBytesProcessed(static_cast<int64_t>(vsa.text.size()) * state.iterations());
  state.counters["statements/s"] = {statements, rate};
  if (vsa.expected.numbers > 0) {
    state.counters["numbers/s"] = {static_cast<double>(vsa.expected.numbers), rate};
  }
  state.counters["allocations/statement"] = static_cast<double>(allocations) / count / statements;
  state.counters["peak/input"] = static_cast<double>(peak) / static_cast<double>(vsa.text.size());
}

void readScene(benchmark::State& state, const SceneRow& row, Route route) {
  const Text& vsa = workplace().sceneOf(row);
  const std::string& path = workplace().path;
  const Contender reader = route == Route::String ? stringReader(vsa) : fileReader(vsa, path);
  size_t allocations = 0;
  for ([[maybe_unused]] auto iteration : state) {
    const size_t before = allocationCount();
    state.SetIterationTime(reader.read());
    allocations += allocationCount() - before;
  }
  report(state, vsa, allocations, peakOfRead(path, route));
}

}  // namespace

void registerReads() {
  for (const SceneRow& row : SCENES) {
    for (const Route route : {Route::String, Route::File}) {
      const std::string name = std::string("read/") + row.name + "/" + row.size +
                               (route == Route::String ? "/string" : "/file");
      benchmark::RegisterBenchmark(name.c_str(), readScene, row, route)
          ->UseManualTime()
          ->Unit(benchmark::kMillisecond);
    }
  }
}

}  // namespace bench
