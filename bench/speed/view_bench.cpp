// Compares access to a scene through views with access through pointers of the plain interface.
// Both must compute the same sum.
#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <vsa/vsa.h>
#include "bench/ours/our_reader.h"

namespace bench {
namespace {

vsa::Scene readNodes() {
  vsa::ReadResult result = vsa::readText(nodes(100'000).text);
  if (!result.isComplete()) throw std::runtime_error(result.message);
  return std::move(result.scene);
}

double sumByPointers(const zn::korvo_sdk::Scene& scene) {
  double sum = 0;
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    const zn::korvo_sdk::Node* const node = scene.nodeAt(slot);
    if (node == nullptr) continue;
    for (std::uint64_t i = 0; i < node->inputCount(); ++i) {
      const zn::korvo_sdk::Input* const input = node->inputAt(i);
      if (input->type() == zn::korvo_sdk::AttrType::Real) sum += input->real();
    }
  }
  return sum;
}

double sumByViews(vsa::SceneView scene) {
  double sum = 0;
  for (const vsa::NodeView node : scene.nodes()) {
    for (const vsa::InputView input : node.inputs()) {
      if (input.type() == vsa::ValueType::Real) sum += *input.real();
    }
  }
  return sum;
}

std::vector<std::string> namesIn(vsa::SceneView scene) {
  std::vector<std::string> names;
  for (const vsa::NodeView node : scene.nodes()) names.emplace_back(node.name());
  return names;
}

double findByPointers(zn::korvo_sdk::Scene& scene, const std::vector<std::string>& names) {
  const zn::String roughness("roughness");
  double sum = 0;
  for (const std::string& name : names) {
    zn::korvo_sdk::Node* const node = scene.findNode(zn::String::copyOf(name));
    zn::korvo_sdk::Input* const input = node != nullptr ? node->input(roughness) : nullptr;
    if (input != nullptr && input->type() == zn::korvo_sdk::AttrType::Real) sum += input->real();
  }
  return sum;
}

double findByViews(vsa::SceneView scene, const std::vector<std::string>& names) {
  double sum = 0;
  for (const std::string& name : names) sum += scene[name]["roughness"].real(0);
  return sum;
}

template <class Look>
void time(benchmark::State& state, const vsa::Scene& scene, double expected, const Look& look) {
  if (look() != expected) throw std::runtime_error("pointers and views do not agree");
  for ([[maybe_unused]] auto iteration : state) benchmark::DoNotOptimize(look());
  state.SetItemsProcessed(static_cast<int64_t>(scene.nodes().size()) * state.iterations());
}

void walkByPointers(benchmark::State& state) {
  vsa::Scene scene = readNodes();
  time(state, scene, sumByViews(scene), [&] { return sumByPointers(scene.plain()); });
}
void walkByViews(benchmark::State& state) {
  vsa::Scene scene = readNodes();
  time(state, scene, sumByPointers(scene.plain()), [&] { return sumByViews(scene); });
}
void lookUpByPointers(benchmark::State& state) {
  vsa::Scene scene = readNodes();
  const std::vector<std::string> names = namesIn(scene);
  time(state, scene, findByViews(scene, names),
       [&] { return findByPointers(scene.plain(), names); });
}
void lookUpByViews(benchmark::State& state) {
  vsa::Scene scene = readNodes();
  const std::vector<std::string> names = namesIn(scene);
  time(state, scene, findByPointers(scene.plain(), names),
       [&] { return findByViews(scene, names); });
}
BENCHMARK(walkByPointers)->Name("walk/pointers")->Unit(benchmark::kMillisecond);
BENCHMARK(walkByViews)->Name("walk/views")->Unit(benchmark::kMillisecond);
BENCHMARK(lookUpByPointers)->Name("look-up/pointers")->Unit(benchmark::kMillisecond);
BENCHMARK(lookUpByViews)->Name("look-up/views")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bench
