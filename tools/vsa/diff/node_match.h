// NodeMatch: finds pairs of nodes in two scenes.
#pragma once

#include <string>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// The pairs of nodes of two scenes A and B. Nodes with the same name are a pair. Of the remaining
/// nodes, two with equal hashes are a pair: they have the same type and the same content, and so
/// have the remaining nodes up to three links away. Tolerances make no difference.
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
