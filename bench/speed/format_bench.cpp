// Measures the stages of vsa fmt in bytes of text per second: reading the tokens, the layout (which
// includes the tokens), and the read with which vsa fmt checks a text before it formats it. Row
// names for the first of three texts: format/tokens/geo, format/layout/geo, format/read/geo.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <span>

#include <vsa/syntax.h>
#include "bench/ours/our_reader.h"
#include "tools/vsa/fmt/layout/text_layout.h"
#include "tools/vsa/fmt/reading/reading_check.h"

namespace bench {
namespace {

class TextSource final : public vsa::Source {
 public:
  explicit TextSource(std::string_view text) : text_(text) {}
  std::size_t read(std::span<char> to) override {
    const std::size_t count = std::min(to.size(), text_.size());
    if (count != 0) std::memcpy(to.data(), text_.data(), count);
    text_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view text_;
};

class NoSink final : public vsa::Sink {
 public:
  bool write(std::string_view text) override {
    benchmark::DoNotOptimize(text.data());
    return true;
  }
};

Text floats(size_t bytes, Format, uint64_t seed) {
  return floatLists(bytes / 10, seed);
}
Text smallNodes(size_t bytes, Format format, uint64_t seed) {
  return nodes(bytes / 20, format, seed);
}

template <class Work>
void run(benchmark::State& state, Text (*make)(size_t, Format, uint64_t), Work work) {
  const Text text = make(20'000'000, Format::Vsa, 1);
  for ([[maybe_unused]] auto iteration : state) {
    TextSource source(text.text);
    work(source);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.text.size()) * state.iterations());
}

void tokens(benchmark::State& state, Text (*make)(size_t, Format, uint64_t)) {
  run(state, make, [](vsa::Source& source) {
    vsa::SyntaxReader reader(source);
    while (reader.next().kind != vsa::SyntaxKind::EndOfText) {
    }
  });
}
void layout(benchmark::State& state, Text (*make)(size_t, Format, uint64_t)) {
  run(state, make, [](vsa::Source& source) {
    vsa::SyntaxReader reader(source);
    NoSink sink;
    vsa_tools::formatText(reader, sink);
  });
}
void reading(benchmark::State& state, Text (*make)(size_t, Format, uint64_t)) {
  run(state, make, [](vsa::Source& source) { vsa_tools::checkReading(source); });
}
BENCHMARK_CAPTURE(tokens, geo, geo)->Name("format/tokens/geo");
BENCHMARK_CAPTURE(tokens, floats, floats)->Name("format/tokens/floats");
BENCHMARK_CAPTURE(tokens, nodes, smallNodes)->Name("format/tokens/nodes");
BENCHMARK_CAPTURE(layout, geo, geo)->Name("format/layout/geo");
BENCHMARK_CAPTURE(layout, floats, floats)->Name("format/layout/floats");
BENCHMARK_CAPTURE(layout, nodes, smallNodes)->Name("format/layout/nodes");
BENCHMARK_CAPTURE(reading, geo, geo)->Name("format/read/geo");
BENCHMARK_CAPTURE(reading, floats, floats)->Name("format/read/floats");
BENCHMARK_CAPTURE(reading, nodes, smallNodes)->Name("format/read/nodes");

}  // namespace
}  // namespace bench
