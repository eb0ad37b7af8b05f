#include "tools/vsa/diff/match/node_match.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

#include "tools/vsa/common/scene/node_links.h"
#include "tools/vsa/diff/match/content_hash.h"
#include "tools/vsa/diff/match/unpaired_nodes.h"

namespace vsa_tools {

namespace {

/// The maximum number of links from a node to another one that its hash depends on. Each round
/// takes time for all links between unpaired nodes.
constexpr int MAX_ROUNDS = 16;

/// Nodes of both scenes that have the same hash, in the order of the scenes.
struct SameNodes {
  std::vector<vsa::NodeView> ofA, ofB;

  bool isUnique() const { return ofA.size() == 1 && ofB.size() == 1; }
};

/// Pairs nodes without a counterpart of the same name by their contents.
class ContentMatch {
 public:
  ContentMatch(vsa::SceneView a, vsa::SceneView b, const std::vector<std::string>& ignored,
               NodePairs& pairs)
      : ignored_(ignored), pairs_(pairs), a_(a, pairs.ofA, ignored), b_(b, pairs.ofB, ignored) {}

  // First, pairs nodes whose content is unique, and those that links from or to a pair show. Then
  // only a choice among nodes with the same content is left. Pairs of the same name need no second
  // pass: the links from them are followed in the first one, and linksTo() has no links to them.
  void pairAll(vsa::SceneView a) {
    if (a_.nodes().empty() || b_.nodes().empty()) return;
    followLinks();
    groupByHash();
    pairUnique();
    pairAlongLinksOf(a.nodes(), Choice::OnlyOne);
    pairAlongLinksOf(a_.nodes(), Choice::First);
    pairInOrder();
  }

 private:
  /// Which node is taken if the links of a pair lead from several nodes with the same content.
  enum class Choice : std::uint8_t { OnlyOne, First };

  /// Computes the hashes of both scenes. They are comparable after the same number of rounds. Ends
  /// when a round tells no more nodes apart, also none of A from one of B.
  void followLinks() {
    std::size_t count = hashCount();
    for (int round = 0; round < MAX_ROUNDS; ++round) {
      a_.followLinks();
      b_.followLinks();
      const std::size_t before = std::exchange(count, hashCount());
      if (count == before) return;
    }
  }

  /// Returns the number of different hashes in both scenes.
  std::size_t hashCount() const {
    std::vector<std::uint64_t> all = a_.hashes();
    all.insert(all.end(), b_.hashes().begin(), b_.hashes().end());
    std::sort(all.begin(), all.end());
    return static_cast<std::size_t>(std::unique(all.begin(), all.end()) - all.begin());
  }

  void groupByHash() {
    for (const vsa::NodeView node : a_.nodes()) same_[a_.hashOf(node)].ofA.push_back(node);
    for (const vsa::NodeView node : b_.nodes()) same_[b_.hashOf(node)].ofB.push_back(node);
  }

  void pairUnique() {
    for (const auto& [hash, nodes] : same_) {
      if (nodes.isUnique()) pairs_.add(nodes.ofA.front(), nodes.ofB.front());
    }
  }

  void pairAlongLinksOf(const auto& nodesOfA, Choice choice) {
    for (const vsa::NodeView node : nodesOfA) {
      if (const vsa::NodeView other = pairs_.inB(node)) pending_.emplace_back(node, other);
    }
    pairAlongLinks(choice);
  }

  /// Pairs the other nodes with the same content in the order of the scenes. Begins with the nodes
  /// that link to unpaired nodes, because a pair of them shows which of those belong together.
  void pairInOrder() {
    std::unordered_map<std::uint64_t, std::size_t> next;  // the nodes of B before it are paired
    for (const bool onlyLinking : {true, false}) {
      for (const vsa::NodeView node : a_.nodes()) {
        if (!pairs_.inB(node) && (!onlyLinking || linksToUnpaired(node))) pairInOrder(node, next);
      }
    }
  }

  void pairInOrder(vsa::NodeView node, std::unordered_map<std::uint64_t, std::size_t>& next) {
    const std::vector<vsa::NodeView>& others = same_[a_.hashOf(node)].ofB;
    std::size_t& at = next[a_.hashOf(node)];
    while (at < others.size() && pairs_.inA(others[at])) ++at;
    if (at == others.size()) return;
    add(node, others[at]);
    pairAlongLinks(Choice::First);
  }

  bool linksToUnpaired(vsa::NodeView nodeOfA) const {
    const auto isPaired = [this](vsa::NodeView node) { return bool(pairs_.inB(node)); };
    return !linksOf(nodeOfA, ignored_, isPaired).empty();
  }

  void add(vsa::NodeView nodeOfA, vsa::NodeView nodeOfB) {
    pairs_.add(nodeOfA, nodeOfB);
    pending_.emplace_back(nodeOfA, nodeOfB);
  }

  void pairAlongLinks(Choice choice) {
    while (!pending_.empty()) {
      const auto [nodeOfA, nodeOfB] = pending_.back();
      pending_.pop_back();
      const auto isInA = [this](vsa::NodeView node) { return bool(pairs_.inB(node)); };
      const auto isInB = [this](vsa::NodeView node) { return bool(pairs_.inA(node)); };
      pairEnds(linksOf(nodeOfA, ignored_, isInA), linksOf(nodeOfB, ignored_, isInB), Choice::First);
      pairEnds(a_.linksTo(nodeOfA), b_.linksTo(nodeOfB), choice);
    }
  }

  /// Pairs the unpaired nodes at the ends of links if their inputs and contents are the same.
  void pairEnds(const NodeLinks& linksOfA, const NodeLinks& linksOfB, Choice choice) {
    if (linksOfA.empty() || linksOfB.empty()) return;
    std::map<std::pair<std::uint64_t, std::uint64_t>, SameNodes> ends;
    for (const auto& [place, node] : linksOfA) {
      if (!pairs_.inB(node)) ends[{place, a_.hashOf(node)}].ofA.push_back(node);
    }
    for (const auto& [place, node] : linksOfB) {
      if (!pairs_.inA(node)) ends[{place, b_.hashOf(node)}].ofB.push_back(node);
    }
    for (const auto& [key, nodes] : ends) {
      if (choice == Choice::OnlyOne && !nodes.isUnique()) continue;
      const std::size_t count = std::min(nodes.ofA.size(), nodes.ofB.size());
      for (std::size_t i = 0; i < count; ++i) {
        const bool isPaired = pairs_.inB(nodes.ofA[i]) || pairs_.inA(nodes.ofB[i]);
        if (!isPaired) add(nodes.ofA[i], nodes.ofB[i]);
      }
    }
  }

  const std::vector<std::string>& ignored_;
  NodePairs& pairs_;
  UnpairedNodes a_, b_;
  std::unordered_map<std::uint64_t, SameNodes> same_;
  // The pairs whose links were not followed yet.
  std::vector<std::pair<vsa::NodeView, vsa::NodeView>> pending_;
};

}  // namespace

vsa::NodeView NodePairs::inB(vsa::NodeView nodeOfA) const {
  return nodeOfA ? ofA[slotOf(nodeOfA)] : vsa::NodeView();
}

vsa::NodeView NodePairs::inA(vsa::NodeView nodeOfB) const {
  return nodeOfB ? ofB[slotOf(nodeOfB)] : vsa::NodeView();
}

void NodePairs::add(vsa::NodeView nodeOfA, vsa::NodeView nodeOfB) {
  ofA[slotOf(nodeOfA)] = nodeOfB;
  ofB[slotOf(nodeOfB)] = nodeOfA;
}

NodeMatch::NodeMatch(vsa::SceneView a, vsa::SceneView b, const std::vector<std::string>& ignored)
    : pairs_{std::vector<vsa::NodeView>(slotCount(a)), std::vector<vsa::NodeView>(slotCount(b))} {
  for (const vsa::NodeView node : a.nodes()) {
    if (const vsa::NodeView other = b[node.name()]) pairs_.add(node, other);
  }
  ContentMatch(a, b, ignored, pairs_).pairAll(a);
}

}  // namespace vsa_tools
