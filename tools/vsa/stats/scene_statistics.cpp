#include "tools/vsa/stats/scene_statistics.h"

#include <algorithm>
#include <fstream>

#include <vsa/view.h>
#include "tools/vsa/common/scene/input_walk.h"
#include "tools/vsa/common/scene/short_value.h"

namespace vsa_tools {

namespace {

constexpr std::uint64_t NUMBER_BYTES = 8, LINK_BYTES = 8;

std::uint64_t valueBytes(vsa::InputView input) {
  switch (input.type()) {
    case vsa::ValueType::Bool:
      return 1;
    case vsa::ValueType::Int:
    case vsa::ValueType::UInt:
    case vsa::ValueType::Real:
      return NUMBER_BYTES;
    case vsa::ValueType::String:
      return input.string("").size();
    case vsa::ValueType::Buffer:
      return input.buffer().bytes().size();
    default:
      return NUMBER_BYTES * input.components().size();
  }
}

void add(InputCounts& total, const InputCounts& other) {
  total.inputs += other.inputs;
  total.members += other.members;
  total.elements += other.elements;
}

void add(BufferCounts& total, const BufferCounts& other) {
  total.buffers += other.buffers;
  total.elements += other.elements;
  total.bytes += other.bytes;
}

/// Returns the counts of a type. An unknown type counts as type 0, so that the index is always
/// inside the table.
template <class Counts, std::size_t N, class Type>
Counts& countsOf(std::array<Counts, N>& byType, Type type) {
  const auto index = static_cast<std::size_t>(type);
  return byType[index < N ? index : 0];
}

/// Returns whether an input with `bytes` bytes is one of the largest so far.
bool isLarge(const std::vector<LargeInput>& largest, std::uint64_t bytes) {
  return bytes > 0 && (largest.size() < MAX_LARGEST_INPUTS || bytes > largest.back().bytes);
}

void addLargest(std::vector<LargeInput>& largest, LargeInput input) {
  const auto place =
      std::upper_bound(largest.begin(), largest.end(), input,
                       [](const LargeInput& a, const LargeInput& b) { return a.bytes > b.bytes; });
  largest.insert(place, std::move(input));
  if (largest.size() > MAX_LARGEST_INPUTS) largest.pop_back();
}

class Counter {
 public:
  Counter(const SceneFile& file, SceneStatistics& counts) : file_(file), counts_(counts) {}

  void countNode(vsa::NodeView node) {
    ++counts_.nodesByType[std::string(node.type())];
    bytes_ = 0;
    walkInputs(node, [&](const InputPlace& place) {
      if (place.depth == 0) endInput();
      countInput(node, place);
      return true;
    });
    endInput();
  }

 private:
  void countInput(vsa::NodeView node, const InputPlace& place) {
    const vsa::InputView input = place.input;
    if (place.depth == 0) input_ = input;
    InputCounts& types = countsOf(counts_.inputsByType, input.type());
    ++(place.isElement ? types.elements : place.depth == 0 ? types.inputs : types.members);
    if (input.type() == vsa::ValueType::Buffer) countBuffer(input.buffer());
    countLinks(input);
    bytes_ += valueBytes(input);
    countPath(node, place);
  }

  void countBuffer(const vsa::BufferView& buffer) {
    add(countsOf(counts_.buffersByType, buffer.elementType()),
        {1, buffer.count(), buffer.bytes().size()});
  }

  void countLinks(vsa::InputView input) {
    const bool refers = bool(input.node()), isConnected = bool(input.connection());
    counts_.references += refers;
    counts_.connections += isConnected;
    bytes_ += LINK_BYTES * (refers + isConnected);
  }

  void countPath(vsa::NodeView node, const InputPlace& place) {
    counts_.deepestPath = std::max<std::uint64_t>(counts_.deepestPath, place.depth + 1);
    if (node.name().size() + 1 + place.path.size() <= counts_.longestPath.size()) return;
    counts_.longestPath = node.name();
    counts_.longestPath += '.';
    counts_.longestPath += place.path;
  }

  /// Ends an input of a node, after everything inside it was counted.
  void endInput() {
    counts_.dataBytes += bytes_;
    if (isLarge(counts_.largestInputs, bytes_)) {
      addLargest(counts_.largestInputs, {file_.name, input_.path(), shortValue(input_), bytes_});
    }
    bytes_ = 0;
  }

  const SceneFile& file_;
  SceneStatistics& counts_;
  vsa::InputView input_;
  std::uint64_t bytes_ = 0;  // the bytes of `input_` that were counted so far
};

}  // namespace

std::uint64_t SceneStatistics::nodes() const {
  std::uint64_t sum = 0;
  for (const auto& [type, count] : nodesByType) sum += count;
  return sum;
}

InputCounts SceneStatistics::inputs() const {
  InputCounts sum;
  for (const InputCounts& counts : inputsByType) add(sum, counts);
  return sum;
}

BufferCounts SceneStatistics::buffers() const {
  BufferCounts sum;
  for (const BufferCounts& counts : buffersByType) add(sum, counts);
  return sum;
}

SceneStatistics statisticsOf(const SceneFile& file) {
  SceneStatistics counts;
  Counter counter(file, counts);
  for (const vsa::NodeView node : file.result.scene.nodes()) counter.countNode(node);
  for (const std::string_view comment : file.result.scene.comments()) {
    ++counts.comments;
    counts.commentBytes += comment.size();
  }
  counts.brokenLinks = file.brokenLinks;
  counts.textBytes = file.result.bytesRead;
  counts.seconds = file.seconds;
  return counts;
}

void addCounts(SceneStatistics& total, const SceneStatistics& other) {
  for (const auto& [type, count] : other.nodesByType) total.nodesByType[type] += count;
  for (std::size_t i = 0; i < total.inputsByType.size(); ++i) {
    add(total.inputsByType[i], other.inputsByType[i]);
  }
  for (std::size_t i = 0; i < total.buffersByType.size(); ++i) {
    add(total.buffersByType[i], other.buffersByType[i]);
  }
  for (const LargeInput& input : other.largestInputs) {
    if (isLarge(total.largestInputs, input.bytes)) addLargest(total.largestInputs, input);
  }
  total.references += other.references;
  total.connections += other.connections;
  total.brokenLinks += other.brokenLinks;
  total.comments += other.comments;
  total.commentBytes += other.commentBytes;
  if (other.longestPath.size() > total.longestPath.size()) total.longestPath = other.longestPath;
  total.deepestPath = std::max(total.deepestPath, other.deepestPath);
  total.textBytes += other.textBytes;
  total.dataBytes += other.dataBytes;
  total.seconds += other.seconds;
}

// Uses VmHWM, because ru_maxrss of getrusage also includes the memory of the process that started
// this one.
std::uint64_t peakMemoryBytes() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word) {
    std::uint64_t kibibytes = 0;
    if (word == "VmHWM:" && status >> kibibytes) return kibibytes * 1024;
  }
  return 0;
}

}  // namespace vsa_tools
