// Measures reads that keep only the nodes with given names: 10 names or 10,000 names, in a text
// with 100,000 statements, some 11,000 nodes. Row names: read/wanted/10 and read/wanted/10000. The
// reader finds the names by their hash, so the time must not grow with the number of names.
#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <vsa/vsa.h>
#include "bench/ours/our_reader.h"

namespace bench {
namespace {

// Returns `count` names. The first 10 names are names of nodes in the text. No node has one of the
// other names.
std::vector<std::string> wantedNames(const std::string& text, std::size_t count) {
  std::vector<std::string> names;
  const vsa::ReadResult whole = vsa::readText(text);
  for (const vsa::NodeView node : whole.scene.nodes()) {
    if (names.size() < 10) names.emplace_back(node.name());
  }
  while (names.size() < count) names.push_back("no such node " + std::to_string(names.size()));
  return names;
}

void readWanted(benchmark::State& state) {
  const Text vsa = nodes(100'000);
  vsa::ReadOptions options;
  options.wantedNames = wantedNames(vsa.text, static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto iteration : state) {
    const vsa::ReadResult result = vsa::readText(vsa.text, options);
    if (!result.isComplete()) throw std::runtime_error(result.message);
    if (result.scene.nodes().size() != 10) throw std::runtime_error("other nodes were kept");
  }
  state.SetBytesProcessed(static_cast<int64_t>(vsa.text.size()) * state.iterations());
}
BENCHMARK(readWanted)->Name("read/wanted")->Arg(10)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bench
