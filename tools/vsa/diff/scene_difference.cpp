#include "tools/vsa/diff/scene_difference.h"

#include <functional>

#include "tools/vsa/common/scene/input_walk.h"
#include "tools/vsa/common/scene/name_pattern.h"
#include "tools/vsa/diff/match/node_match.h"

namespace vsa_tools {

namespace {

class NodeComparison {
 public:
  using Add = std::function<void(const Difference&)>;

  NodeComparison(vsa::NodeView a, vsa::NodeView b, const NodeMatch& match,
                 const DiffOptions& options, const Add& add)
      : a_(a), b_(b), match_(match), options_(options), add_(add) {}

  void run() {
    if (a_.type() != b_.type()) add_({DifferenceKind::NodeType, a_, b_});
    walkInputs(a_, [this](const InputPlace& place) { return compare(place); });
    for (const vsa::InputView input : b_.inputs()) {
      if (!a_[input.name()]) addInput(std::string(input.name()), input);
    }
  }

 private:
  /// Compares an input of A with the same input of B. Returns whether the inputs inside it must be
  /// compared, too.
  bool compare(const InputPlace& place) {
    if (isIgnored(place.path)) return false;
    const vsa::InputView a = place.input, b = counterpart(place);
    counterparts_.resize(place.depth);
    counterparts_.push_back(b);
    if (!b) {
      if (!isElementOfValueArray(a)) add_({DifferenceKind::InputRemoved, a_, b_, place.path, a});
      return false;
    }
    compareConnections(place.path, a, b);
    compareValues(place.path, a, b);
    const bool hasSameChildren = a.type() == b.type() && a.elementType() == b.elementType();
    if (hasSameChildren && !(a.type() == vsa::ValueType::Array && isValueArray(a))) {
      addNewChildren(place.path, a, b);
    }
    return hasSameChildren && childCount(a) > 0;
  }

  vsa::InputView counterpart(const InputPlace& place) const {
    if (place.depth == 0) return b_[place.input.name()];
    const vsa::InputView parent = counterparts_[place.depth - 1];
    return place.isElement ? parent[place.index] : parent[place.input.name()];
  }

  void compareConnections(std::string_view path, vsa::InputView a, vsa::InputView b) {
    const vsa::ConnectionView sourceA = a.connection(), sourceB = b.connection();
    if (sourceA.output() == sourceB.output() && isPair(sourceA.node(), sourceB.node())) return;
    add_({DifferenceKind::Connection, a_, b_, path, a, b});
  }

  void compareValues(std::string_view path, vsa::InputView a, vsa::InputView b) {
    if (isReference(a) && isReference(b)) {
      if (!isPair(a.node(), b.node())) addValue(path, a, b);
    } else if (a.type() != b.type() || a.elementType() != b.elementType()) {
      addValue(path, a, b);
    } else {
      compareSameTypes(path, a, b);
    }
  }

  void compareSameTypes(std::string_view path, vsa::InputView a, vsa::InputView b) {
    if (a.type() == vsa::ValueType::Buffer) {
      compareBufferValues(path, a, b);
    } else if (a.type() == vsa::ValueType::Array) {
      if (isValueArray(a)) addList(path, a, b, compareArrays(a, b, options_.tolerance));
    } else if (!a.components().empty()) {
      addList(path, a, b, compareTuples(a, b, options_.tolerance));
    } else if (a.type() != vsa::ValueType::Object && !isElementOfValueArray(a) &&
               !isSameValue(a, b, options_.tolerance)) {
      addValue(path, a, b);
    }
  }

  void compareBufferValues(std::string_view path, vsa::InputView a, vsa::InputView b) {
    const vsa::BufferView bufferA = a.buffer(), bufferB = b.buffer();
    if (bufferA.elementType() != bufferB.elementType())
      addValue(path, a, b);
    else
      addList(path, a, b, compareBuffers(bufferA, bufferB, options_.tolerance));
  }

  void addValue(std::string_view path, vsa::InputView a, vsa::InputView b) {
    add_({DifferenceKind::Value, a_, b_, path, a, b});
  }

  void addList(std::string_view path, vsa::InputView a, vsa::InputView b,
               const ListDifference& list) {
    if (list.isSame() || isElementOfValueArray(a)) return;
    add_({DifferenceKind::Value, a_, b_, path, a, b, list});
  }

  /// Adds the elements and members that only B has.
  void addNewChildren(std::string_view path, vsa::InputView a, vsa::InputView b) {
    const bool isArray = a.type() == vsa::ValueType::Array;
    for (std::uint64_t i = isArray ? childCount(a) : 0; i < childCount(b); ++i) {
      const vsa::InputView child = childAt(b, i);
      if (!isArray && a[child.name()]) continue;
      std::string childPath(path);
      appendStep(childPath, child.name(), i, isArray);
      addInput(childPath, child);
    }
  }

  void addInput(const std::string& path, vsa::InputView input) {
    if (!isIgnored(path)) add_({DifferenceKind::InputAdded, a_, b_, path, {}, input});
  }

  /// Returns whether the input is an element of an array that is compared as a list of values. Only
  /// the connection of such an element is compared separately.
  static bool isElementOfValueArray(vsa::InputView input) {
    const vsa::InputView parent(input.plain()->parent());
    return parent.type() == vsa::ValueType::Array && isValueArray(parent);
  }

  /// Returns whether the input is a reference or has no value. A null reference equals an input
  /// without a value.
  static bool isReference(vsa::InputView input) {
    return input.type() == vsa::ValueType::Node || input.type() == vsa::ValueType::Null;
  }

  bool isPair(vsa::NodeView a, vsa::NodeView b) const {
    return a ? match_.inB(a) == b && bool(b) : !b;
  }

  bool isIgnored(std::string_view path) const {
    if (options_.ignored.empty()) return false;
    const auto matches = [&](vsa::NodeView node) {
      return matchesAny(options_.ignored, std::string(node.name()) + '.' + std::string(path));
    };
    return matches(a_) || matches(b_);
  }

  vsa::NodeView a_, b_;
  const NodeMatch& match_;
  const DiffOptions& options_;
  const Add& add_;
  std::vector<vsa::InputView>
      counterparts_;  // in B: of the current input and of the inputs that contain it
};

}  // namespace

std::uint64_t compareScenes(vsa::SceneView a, vsa::SceneView b, const DiffOptions& options,
                            DifferenceSink& sink) {
  const NodeMatch match(a, b, options.ignored);
  std::uint64_t count = 0;
  const NodeComparison::Add add = [&](const Difference& difference) {
    ++count;
    sink.add(difference);
  };
  const auto isIgnored = [&](vsa::NodeView node) {
    return matchesAny(options.ignored, node.name());
  };
  for (const vsa::NodeView node : a.nodes()) {
    const vsa::NodeView other = match.inB(node);
    if (isIgnored(node) || isIgnored(other)) continue;
    if (!other) {
      add({DifferenceKind::NodeRemoved, node, {}});
      continue;
    }
    if (node.name() != other.name()) add({DifferenceKind::NodeRenamed, node, other});
    NodeComparison(node, other, match, options, add).run();
  }
  for (const vsa::NodeView node : b.nodes()) {
    if (!match.inA(node) && !isIgnored(node)) add({DifferenceKind::NodeAdded, {}, node});
  }
  return count;
}

}  // namespace vsa_tools
