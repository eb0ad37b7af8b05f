#include "tools/vsa/diff/node_match.h"

#include <cstdint>
#include <unordered_map>
#include <utility>

#include "tools/vsa/common/scene/node_links.h"
#include "tools/vsa/diff/content_hash.h"

namespace vsa_tools {

namespace {

/// The number of rounds that combine the hash of a node with the hashes of the unpaired nodes that
/// it links to. After three rounds, the hash of a node depends on all unpaired nodes that at most
/// three links lead to.
constexpr int ROUNDS = 3;

/// The nodes of one scene that have no counterpart, with the hashes of their contents.
class UnpairedNodes {
 public:
  UnpairedNodes(vsa::SceneView scene, const std::vector<vsa::NodeView>& counterparts,
                const std::vector<std::string>& ignored)
      : indices_(slotCount(scene)) {
    const auto isPaired = [&](vsa::NodeView node) { return bool(counterparts[slotOf(node)]); };
    for (const vsa::NodeView node : scene.nodes()) {
      if (isPaired(node)) continue;
      indices_[slotOf(node)] = nodes.size();
      nodes.push_back(node);
      contents_.push_back(contentOf(node, ignored, isPaired));
      hashes.push_back(contents_.back().hash);
    }
    for (int round = 0; round < ROUNDS; ++round) followLinks();
  }

  std::vector<vsa::NodeView> nodes;
  std::vector<std::uint64_t> hashes;  // the hash of nodes[i] at index i

 private:
  void followLinks() {
    std::vector<std::uint64_t> next;
    next.reserve(hashes.size());
    for (const NodeContent& content : contents_) {
      std::uint64_t hash = content.hash;
      for (const auto& [place, target] : content.links) {
        hash += mixHashes(place, hashes[indices_[slotOf(target)]]);
      }
      next.push_back(hash);
    }
    hashes = std::move(next);
  }

  std::vector<std::size_t> indices_;  // the index in `nodes` of the node in each slot
  std::vector<NodeContent> contents_;
};

}  // namespace

NodeMatch::NodeMatch(vsa::SceneView a, vsa::SceneView b, const std::vector<std::string>& ignored)
    : ofA_(slotCount(a)), ofB_(slotCount(b)) {
  pairByName(a, b);
  pairByContent(a, b, ignored);
}

vsa::NodeView NodeMatch::inB(vsa::NodeView nodeOfA) const {
  return nodeOfA ? ofA_[slotOf(nodeOfA)] : vsa::NodeView();
}

vsa::NodeView NodeMatch::inA(vsa::NodeView nodeOfB) const {
  return nodeOfB ? ofB_[slotOf(nodeOfB)] : vsa::NodeView();
}

void NodeMatch::pair(vsa::NodeView nodeOfA, vsa::NodeView nodeOfB) {
  ofA_[slotOf(nodeOfA)] = nodeOfB;
  ofB_[slotOf(nodeOfB)] = nodeOfA;
}

void NodeMatch::pairByName(vsa::SceneView a, vsa::SceneView b) {
  for (const vsa::NodeView node : a.nodes()) {
    if (const vsa::NodeView other = b[node.name()]) pair(node, other);
  }
}

void NodeMatch::pairByContent(vsa::SceneView a, vsa::SceneView b,
                              const std::vector<std::string>& ignored) {
  const UnpairedNodes unpairedA(a, ofA_, ignored), unpairedB(b, ofB_, ignored);
  // The unpaired nodes of B for each hash. Each list is in the reverse order of the scene, so that
  // its last element, which is the first node in the scene, is taken first.
  std::unordered_map<std::uint64_t, std::vector<vsa::NodeView>> byHash;
  for (std::size_t i = unpairedB.nodes.size(); i-- > 0;) {
    byHash[unpairedB.hashes[i]].push_back(unpairedB.nodes[i]);
  }
  for (std::size_t i = 0; i < unpairedA.nodes.size(); ++i) {
    const auto same = byHash.find(unpairedA.hashes[i]);
    if (same == byHash.end() || same->second.empty()) continue;
    pair(unpairedA.nodes[i], same->second.back());
    same->second.pop_back();
  }
}

}  // namespace vsa_tools
