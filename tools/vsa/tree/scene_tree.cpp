#include "tools/vsa/tree/scene_tree.h"

#include <limits>
#include <string_view>

#include "tools/vsa/common/scene/node_links.h"
#include "tools/vsa/tree/tree_lines.h"
#include "tools/vsa/tree/tree_roots.h"

namespace vsa_tools {

namespace {

/// The maximum level that is indented. Lines of deeper levels begin with the number of their level.
/// If every level were indented, the tree of a chain of n nodes would have n * n characters.
constexpr std::size_t INDENTED_LEVELS = 40;

/// The number of links that lead to the node in each slot from the nearest root. Computed for nodes
/// up to a maximum number of links. The number of other nodes is the largest one.
std::vector<std::uint64_t> linksFromRoots(vsa::SceneView scene,
                                          const std::vector<vsa::NodeView>& roots,
                                          std::uint64_t maxLinks) {
  constexpr std::uint64_t UNKNOWN = std::numeric_limits<std::uint64_t>::max();
  std::vector<std::uint64_t> links(slotCount(scene), UNKNOWN);
  std::vector<vsa::NodeView> nodes, next;
  const auto add = [&](vsa::NodeView node, std::uint64_t count) {
    if (links[slotOf(node)] != UNKNOWN) return;
    links[slotOf(node)] = count;
    next.push_back(node);
  };
  for (const vsa::NodeView root : roots) add(root, 0);
  for (std::uint64_t count = 1; count <= maxLinks && !next.empty(); ++count) {
    nodes.swap(next);
    next.clear();
    for (const vsa::NodeView node : nodes) {
      forEachLink(node, [&](const InputPlace&, vsa::NodeView target) { add(target, count); });
    }
  }
  return links;
}

class TreePrinter {
 public:
  TreePrinter(vsa::SceneView scene, const std::vector<vsa::NodeView>& roots,
              const TreeOptions& options, TextOutput& out)
      : options_(options), out_(out), states_(slotCount(scene)), lines_(slotCount(scene)) {
    if (options.depth) links_ = linksFromRoots(scene, roots, *options.depth);
  }

  void print(vsa::NodeView root) {
    if (state(root) == State::Shown) return;
    out_.put(nodeTitle(root));
    if (isAtDepth()) {
      if (hasLines(root)) out_.put(" ...");
      out_.put('\n');
      return;
    }
    out_.put('\n');
    enter(root, false);
    while (!open_.empty()) step();
  }

 private:
  enum class State : char { New, Open, Shown };
  enum class HasLines : char { Unknown, No, Yes };

  /// A node whose lines are being written.
  struct Frame {
    vsa::NodeView node;
    std::vector<TreeLine> lines;
    std::size_t next = 0;
    std::size_t indentBytes = 0;  // the indentation of the line with the node
  };

  State& state(vsa::NodeView node) { return states_[slotOf(node)]; }
  /// Returns whether a node has lines. Its inputs are visited only once, even if many links lead to
  /// it.
  bool hasLines(vsa::NodeView node) {
    HasLines& known = lines_[slotOf(node)];
    if (known == HasLines::Unknown) {
      known = hasTreeLines(node, options_.inputs) ? HasLines::Yes : HasLines::No;
    }
    return known == HasLines::Yes;
  }
  /// Returns whether fewer links lead to a target from a root than to this place. With a maximum
  /// depth, its lines are shown where the fewest links lead to it, so that they are complete.
  bool isNearerElsewhere(vsa::NodeView target) const {
    return !links_.empty() && links_[slotOf(target)] < open_.size();
  }
  bool isAtDepth() const { return options_.depth && open_.size() >= *options_.depth; }

  void step() {
    Frame& frame = open_.back();
    if (frame.next == frame.lines.size()) {
      state(frame.node) = State::Shown;
      indent_.resize(frame.indentBytes);
      open_.pop_back();
      return;
    }
    const TreeLine line = frame.lines[frame.next++];
    const bool isLast = frame.next == frame.lines.size();
    putStart(isLast);
    out_.put(line.text());
    if (const vsa::NodeView target = line.target())
      follow(target, isLast);
    else
      out_.put('\n');
  }

  void putStart(bool isLast) {
    if (open_.size() > INDENTED_LEVELS) {
      out_.put('[');
      out_.put(open_.size());
      out_.put("] ");
    }
    out_.put(indent_);
    out_.put(isLast ? "└─ " : "├─ ");
  }

  /// Ends the line of a link and begins the lines of its target.
  void follow(vsa::NodeView target, bool isLast) {
    const bool isNew = state(target) == State::New;
    if (state(target) == State::Open) {
      out_.put(" (circle)\n");
    } else if (!hasLines(target)) {
      out_.put('\n');
    } else if (isNew && isNearerElsewhere(target)) {
      out_.put(" (shown below)\n");
    } else if (isNew && isAtDepth()) {
      out_.put(" ...\n");
    } else {
      out_.put(isNew ? "\n" : " (shown above)\n");
      if (isNew) enter(target, isLast);
    }
  }

  void enter(vsa::NodeView node, bool isLast) {
    const std::size_t indentBytes = indent_.size();
    if (!open_.empty() && open_.size() < INDENTED_LEVELS) indent_ += isLast ? "   " : "│  ";
    state(node) = State::Open;
    open_.push_back({node, treeLines(node, options_.inputs), 0, indentBytes});
  }

  const TreeOptions& options_;
  TextOutput& out_;
  std::vector<State> states_;    // the state of the node in each slot
  std::vector<HasLines> lines_;  // whether the node in each slot has lines
  // With a maximum depth: the number of links to the node in each slot from the nearest root.
  std::vector<std::uint64_t> links_;
  std::vector<Frame> open_;
  std::string indent_;
};

}  // namespace

std::uint64_t printTree(vsa::SceneView scene, const TreeOptions& options, TextOutput& out) {
  const std::vector<vsa::NodeView> roots = treeRoots(scene, options);
  TreePrinter printer(scene, roots, options, out);
  for (const vsa::NodeView root : roots) printer.print(root);
  return roots.size();
}

}  // namespace vsa_tools
