// NodeMatch: finds pairs of nodes in two scenes.
#pragma once

#include <string>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// The nodes of two scenes that are pairs.
struct NodePairs {
  std::vector<vsa::NodeView> ofA, ofB;  // the counterpart of the node in each slot

  vsa::NodeView inB(vsa::NodeView nodeOfA) const;
  vsa::NodeView inA(vsa::NodeView nodeOfB) const;
  void add(vsa::NodeView nodeOfA, vsa::NodeView nodeOfB);
};

/// Pairs each node of scene A with at most one node of scene B. Nodes with the same name are a
/// pair. Any other pair has the same content: the hashes of the types, values and links of both
/// nodes, and of the unpaired nodes that these links lead to, are equal. --tolerance and --relative
/// do not apply here. Inputs that match a pattern of `ignored` (--ignore) are left out. If several
/// nodes have the same content, those are a pair that the same inputs of another pair link to, or
/// whose same inputs link to another pair. Otherwise a node of A is paired with the first such node
/// of B.
class NodeMatch {
 public:
  NodeMatch(vsa::SceneView a, vsa::SceneView b, const std::vector<std::string>& ignored);

  /// Returns the node of B that is paired with a node of A. Missing if there is none.
  vsa::NodeView inB(vsa::NodeView nodeOfA) const { return pairs_.inB(nodeOfA); }
  /// Returns the node of A that is paired with a node of B. Missing if there is none.
  vsa::NodeView inA(vsa::NodeView nodeOfB) const { return pairs_.inA(nodeOfB); }

 private:
  NodePairs pairs_;
};

}  // namespace vsa_tools
