// Rules about index buffers: each index must be that of a point of the same node. Inputs with
// indices and points are recognised by their names.
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/vsa/check/rules/scene/scene_rules.h"

namespace vsa_tools {

namespace {

using vsa::BufferView;
using vsa::InputView;
using vsa::NodeView;

// The names of inputs with indices and points: those that docs/format.md recommends, and other
// common ones.
constexpr const char* INDEX_NAMES[] = {"indices", "triangles"};
constexpr const char* POINT_NAMES[] = {"points", "positions", "vertices"};

// Returns the position of the first number in a buffer that is negative or not less than `count`.
template <class T>
std::optional<std::size_t> firstBeyond(const BufferView& buffer, std::uint64_t count) {
  const auto numbers = buffer.as<T>();
  const auto bad = std::find_if(numbers.begin(), numbers.end(), [&](T number) {
    return number < T{0} || static_cast<std::uint64_t>(number) >= count;
  });
  if (bad == numbers.end()) return std::nullopt;
  return static_cast<std::size_t>(bad - numbers.begin());
}

std::optional<std::size_t> indexBeyond(const BufferView& buffer, std::uint64_t count) {
  using vsa::ElementType;
  switch (buffer.elementType()) {
    case ElementType::Byte:
      return firstBeyond<unsigned char>(buffer, count);
    case ElementType::Int16:
      return firstBeyond<std::int16_t>(buffer, count);
    case ElementType::UInt16:
      return firstBeyond<std::uint16_t>(buffer, count);
    case ElementType::Int32:
      return firstBeyond<std::int32_t>(buffer, count);
    case ElementType::UInt32:
      return firstBeyond<std::uint32_t>(buffer, count);
    case ElementType::Int64:
      return firstBeyond<std::int64_t>(buffer, count);
    case ElementType::UInt64:
      return firstBeyond<std::uint64_t>(buffer, count);
    default:
      return std::nullopt;
  }
}

// Returns the input with the points of the node: the first of POINT_NAMES that is a buffer whose
// elements have two or three components. Returns a missing input if there is none, or if that input
// is connected, because its points are then unknown.
InputView pointsOf(const NodeView& node) {
  for (const char* name : POINT_NAMES) {
    const InputView input = node[name];
    const unsigned components = zn::korvo_sdk::componentCount(input.buffer().elementType());
    if (components == 2 || components == 3) return input.connection() ? InputView() : input;
  }
  return {};
}

void checkNode(const NodeView& node, SceneFindings& found) {
  const InputView points = pointsOf(node);
  if (!points) return;
  const std::uint64_t count = points.buffer().count();
  for (const char* name : INDEX_NAMES) {
    const InputView input = node[name];
    if (input.type() != vsa::ValueType::Buffer) continue;
    const std::optional<std::size_t> at = indexBeyond(input.buffer(), count);
    if (!at) continue;
    found.add({RuleId::IndexBeyondPoints, input.path(),
               "number " + std::to_string(*at) + " of these indices points beyond " +
                   points.path() + ", which has " + std::to_string(count) +
                   (count == 1 ? " point" : " points"),
               "indices count from 0"});
  }
}

// Inspects the nodes that have a buffer.
class IndexRules final : public InputRule {
 public:
  explicit IndexRules(SceneFindings& found) : found_(found) {}

  void visit(const NodeView& node, const InputView&, vsa::ValueType) override {
    if (nodes_.empty() || nodes_.back() != node) nodes_.push_back(node);
  }

  void finish() override {
    for (const NodeView& node : nodes_) checkNode(node, found_);
  }

 private:
  SceneFindings& found_;
  std::vector<NodeView> nodes_;
};

}  // namespace

InputRulePointer indexRules(SceneFindings& found) {
  if (!found.isEnabled(RuleId::IndexBeyondPoints)) return nullptr;
  return std::make_unique<IndexRules>(found);
}

}  // namespace vsa_tools
