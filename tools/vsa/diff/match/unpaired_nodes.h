// UnpairedNodes: the nodes of a scene that have no counterpart of the same name in another scene.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <vsa/view.h>
#include "tools/vsa/diff/match/content_hash.h"

namespace vsa_tools {

/// The nodes of one scene that have no counterpart yet, with hashes of their contents. A hash
/// covers the type and the values of a node, and the hashes of the nodes without counterpart that
/// it links to.
class UnpairedNodes {
 public:
  /// `counterparts` has the counterpart of the node in each slot. Inputs that match a pattern of
  /// `ignored` are left out.
  UnpairedNodes(vsa::SceneView scene, const std::vector<vsa::NodeView>& counterparts,
                const std::vector<std::string>& ignored);

  /// Returns the nodes in the order of the scene.
  const std::vector<vsa::NodeView>& nodes() const { return nodes_; }
  /// Returns the hash of one of these nodes.
  std::uint64_t hashOf(vsa::NodeView node) const;
  /// Returns the links from these nodes to `target`, each with the node that it comes from, in the
  /// order of the scene. Returns none if `target` had a counterpart from the beginning.
  const NodeLinks& linksTo(vsa::NodeView target) const;
  /// Combines the hash of each node with the hashes of the nodes that it links to. After n calls, a
  /// hash depends on all nodes that at most n links lead to.
  void followLinks();
  /// Returns the hashes of all nodes, in the order of nodes().
  const std::vector<std::uint64_t>& hashes() const { return hashes_; }

 private:
  // The index in `nodes_` of the node in each slot. NO_INDEX for a node that has a counterpart.
  std::vector<std::size_t> indices_;
  std::vector<vsa::NodeView> nodes_;
  std::vector<NodeContent> contents_;
  std::vector<std::uint64_t> hashes_;  // the hash of nodes_[i] at index i
  std::vector<NodeLinks> linksTo_;     // the links to nodes_[i] at index i
  NodeLinks noLinks_;
};

}  // namespace vsa_tools
