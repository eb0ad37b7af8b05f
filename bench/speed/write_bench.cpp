// Measures writing: lists of numbers, single numbers, nodes, links, and the encoder of compressed
// buffers.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench/ours/our_writer.h"
#include "foundation/numbers/number_print.h"

namespace bench {
namespace {

constexpr size_t NUMBER_COUNT = 500'000;

void setRate(benchmark::State& state, const char* name, size_t amount) {
  state.counters[name] = {static_cast<double>(amount),
                          benchmark::Counter::kIsIterationInvariantRate};
}

void time(benchmark::State& state, const Candidate& writer) {
  for ([[maybe_unused]] auto iteration : state) state.SetIterationTime(writer.read());
}

void writeFloatList(benchmark::State& state) {
  time(state, sinkWriter("", floatScene(floatsOf(floatNumbers(NUMBER_COUNT)))));
  setRate(state, "numbers/s", NUMBER_COUNT);
}
void writeDoubleList(benchmark::State& state) {
  time(state, sinkWriter("", doubleScene(doublesOf(floatNumbers(NUMBER_COUNT)))));
  setRate(state, "numbers/s", NUMBER_COUNT);
}
void writeNodes(benchmark::State& state) {
  const Text vsa = nodes(100'000);
  time(state, textWriter("", sceneOf(vsa)));
  setRate(state, "statements/s", vsa.expected.statements);
}
void writeLinks(benchmark::State& state) {
  const Text vsa = links(100'000);
  time(state, textWriter("", sceneOf(vsa)));
  setRate(state, "statements/s", vsa.expected.statements);
}
BENCHMARK(writeFloatList)->Name("write/float_list")->UseManualTime();
BENCHMARK(writeDoubleList)->Name("write/double_list")->UseManualTime();
BENCHMARK(writeNodes)->Name("write/nodes")->UseManualTime();
BENCHMARK(writeLinks)->Name("write/links")->UseManualTime();

template <class Number>
void printNumbers(benchmark::State& state, const std::vector<Number>& numbers) {
  char text[zn::numbers::PRINT_CAPACITY];
  for ([[maybe_unused]] auto iteration : state) {
    for (const Number number : numbers) {
      benchmark::DoNotOptimize(zn::numbers::printNumber(text, number));
    }
  }
  setRate(state, "numbers/s", numbers.size());
}

void printFloats(benchmark::State& state) {
  printNumbers(state, floatsOf(floatNumbers(NUMBER_COUNT)));
}
void printDoubles(benchmark::State& state) {
  printNumbers(state, doublesOf(floatNumbers(NUMBER_COUNT)));
}
BENCHMARK(printFloats)->Name("number_print/float");
BENCHMARK(printDoubles)->Name("number_print/double");

void deflate(benchmark::State& state) {
  const std::string bytes = imageBytes(4 << 20, 1);
  time(state, ourDeflate(bytes));
  state.SetBytesProcessed(static_cast<int64_t>(bytes.size()) * state.iterations());
}
BENCHMARK(deflate)->Name("deflate/stream")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bench
