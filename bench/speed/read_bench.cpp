// Measures reads of generated scenes from a String and from a File. Row name: read/geo/50MB/string.
//
// Counters: bytes and statements per second, numbers per second if there are buffers, allocations
// per statement, and the peak resident memory over the size of the input. A read from a File does
// not hold the input in memory. The time does not include the destruction of the scene.
//
// Also measures the work of `vsa dump`, including the read. Row name: dump/geo/5MB.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>

#include "bench/measure/allocation_count.h"
#include "bench/measure/memory.h"
#include "bench/ours/our_reader.h"
#include "tools/scene_text/scene_dump.h"
#include "tools/vsa/common/read_scene.h"
#include "tools/vsa/dump/dump_log.h"

namespace bench {
namespace {

struct SceneRow {
  const char* name;
  const char* size;
  Text (*make)(size_t, Format, uint64_t);
  size_t amount;
  bool isDumped = false;
};

constexpr SceneRow SCENES[] = {
    {"geo", "5MB", geo, 5'000'000, true},
    {"geo", "50MB", geo, 50'000'000},
    {"geo", "250MB", geo, 250'000'000},
    {"nodes", "10k", nodes, 10'000},
    {"nodes", "100k", nodes, 100'000, true},
    {"nodes", "1M", nodes, 1'000'000},
    {"mixed", "100k", mixed, 100'000},
    {"indexed", "100k", indexed, 100'000},
    {"links", "1k", links, 1'000},
    {"links", "10k", links, 10'000},
    {"links", "100k", links, 100'000},
    {"links", "1M", links, 1'000'000},
    {"text", "1MB", text, 1'000'000},
    {"text", "20MB", text, 20'000'000, true},
    {"short", "20MB", shortText, 20'000'000},
    {"compressed", "20MB", compressed, 20'000'000, true},
};

std::string scratchFile() {
  const char* const folder = std::getenv("VSA_BENCH_SCRATCH");
  return std::string(folder != nullptr ? folder : "/tmp") + "/vsa_bench.vsa";
}

// The current scene as a text and as a file. Consecutive benchmarks of one scene share it. They
// must pass the address of the same row.
class CurrentScene {
 public:
  const Text& generate(const SceneRow* row) {
    if (current == row) return vsa;
    vsa = row->make(row->amount, Format::Vsa, 1);
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr || std::fwrite(vsa.text.data(), 1, vsa.text.size(), file) == 0 ||
        std::fclose(file) != 0) {
      throw std::runtime_error("cannot write " + path);
    }
    current = row;
    return vsa;
  }

  const std::string path = scratchFile();

 private:
  const SceneRow* current = nullptr;
  Text vsa;
};

CurrentScene& currentScene() {
  static CurrentScene scene;
  return scene;
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

void readScene(benchmark::State& state, const SceneRow* row, Route route) {
  const Text& vsa = currentScene().generate(row);
  const std::string& path = currentScene().path;
  const Candidate reader = route == Route::String ? stringReader(vsa) : fileReader(vsa, path);
  size_t allocations = 0;
  for ([[maybe_unused]] auto iteration : state) {
    const size_t before = allocationCount();
    state.SetIterationTime(reader.read());
    allocations += allocationCount() - before;
  }
  report(state, vsa, allocations, peakOfRead(path, route));
}

void dumpScene(benchmark::State& state, const SceneRow* row) {
  const Text& vsa = currentScene().generate(row);
  std::FILE* const devNull = std::fopen("/dev/null", "wb");
  for ([[maybe_unused]] auto iteration : state) {
    vsa::Scene scene;
    const vsa_tools::ReadArguments reading;
    vsa_tools::DumpLog log(reading);
    const auto outcome = vsa_tools::readScene(scene, currentScene().path, log.options());
    if (!outcome || !outcome->isComplete()) {
      state.SkipWithError("the file was not read");
      break;
    }
    vsa_tools::TextOutput out(devNull);
    dumpJson(
        log.end(outcome->read), [&log](vsa_tools::TextOutput& to) { to.put(log.json()); },
        scene.plain(), out);
    out.flush();
  }
  std::fclose(devNull);
  state.SetBytesProcessed(static_cast<int64_t>(vsa.text.size()) * state.iterations());
}

}  // namespace

void registerBenchmarks() {
  for (const SceneRow& row : SCENES) {
    for (const Route route : {Route::String, Route::File}) {
      const std::string name = std::string("read/") + row.name + "/" + row.size +
                               (route == Route::String ? "/string" : "/file");
      benchmark::RegisterBenchmark(name.c_str(), readScene, &row, route)
          ->UseManualTime()
          ->Unit(benchmark::kMillisecond);
    }
    if (!row.isDumped) continue;
    const std::string name = std::string("dump/") + row.name + "/" + row.size;
    benchmark::RegisterBenchmark(name.c_str(), dumpScene, &row)->Unit(benchmark::kMillisecond);
  }
}

}  // namespace bench
