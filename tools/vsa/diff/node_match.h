// NodeMatch: finds pairs of nodes in two scenes.
#pragma once

#include <string>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// Pairs each node of scene A with at most one node of scene B. Nodes with the same name are a
/// pair. The other nodes are compared by a hash. It covers the type, values and links of the node,
/// and those of every other unpaired node that at most three links lead to. A node of A is paired
/// with the first unpaired node of B that has the same hash. --tolerance and --relative do not
/// apply here. Inputs that match a pattern of `ignored` (--ignore) are left out.
class NodeMatch {
 public:
  NodeMatch(vsa::SceneView a, vsa::SceneView b, const std::vector<std::string>& ignored);

  /// Returns the node of B that is paired with a node of A. Missing if there is none.
  vsa::NodeView inB(vsa::NodeView nodeOfA) const;
  /// Returns the node of A that is paired with a node of B. Missing if there is none.
  vsa::NodeView inA(vsa::NodeView nodeOfB) const;

 private:
  void pair(vsa::NodeView nodeOfA, vsa::NodeView nodeOfB);
  void pairByName(vsa::SceneView a, vsa::SceneView b);
  void pairByContent(vsa::SceneView a, vsa::SceneView b, const std::vector<std::string>& ignored);

  std::vector<vsa::NodeView> ofA_, ofB_;  // the counterpart of the node in each slot
};

}  // namespace vsa_tools
