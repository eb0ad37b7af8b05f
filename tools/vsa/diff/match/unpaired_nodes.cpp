#include "tools/vsa/diff/match/unpaired_nodes.h"

#include <utility>

#include "tools/vsa/common/scene/node_links.h"

namespace vsa_tools {

namespace {

constexpr std::size_t NO_INDEX = static_cast<std::size_t>(-1);

}  // namespace

UnpairedNodes::UnpairedNodes(vsa::SceneView scene, const std::vector<vsa::NodeView>& counterparts,
                             const std::vector<std::string>& ignored)
    : indices_(slotCount(scene), NO_INDEX) {
  const auto isPaired = [&](vsa::NodeView node) { return bool(counterparts[slotOf(node)]); };
  for (const vsa::NodeView node : scene.nodes()) {
    if (isPaired(node)) continue;
    indices_[slotOf(node)] = nodes_.size();
    nodes_.push_back(node);
    contents_.push_back(contentOf(node, ignored, isPaired));
    hashes_.push_back(contents_.back().hash);
  }
  linksTo_.resize(nodes_.size());
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    for (const auto& [place, target] : contents_[i].links) {
      linksTo_[indices_[slotOf(target)]].emplace_back(place, nodes_[i]);
    }
  }
}

const NodeLinks& UnpairedNodes::linksTo(vsa::NodeView target) const {
  const std::size_t index = indices_[slotOf(target)];
  return index == NO_INDEX ? noLinks_ : linksTo_[index];
}

std::uint64_t UnpairedNodes::hashOf(vsa::NodeView node) const {
  return hashes_[indices_[slotOf(node)]];
}

void UnpairedNodes::followLinks() {
  std::vector<std::uint64_t> next;
  next.reserve(hashes_.size());
  for (const NodeContent& content : contents_) {
    std::uint64_t hash = content.hash;
    for (const auto& [place, target] : content.links) hash += mixHashes(place, hashOf(target));
    next.push_back(hash);
  }
  hashes_ = std::move(next);
}

}  // namespace vsa_tools
