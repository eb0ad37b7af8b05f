// Finds the node of one scene for each node of another one.
#pragma once

#include <string>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// Pairs of nodes: first those with the same name, then nodes with the same type and content among
/// the others.
class NodeMatch {
 public:
  NodeMatch(vsa::SceneView a, vsa::SceneView b, const std::vector<std::string>& ignored);

  /// The node of B for a node of A; missing if there is none.
  vsa::NodeView inB(vsa::NodeView nodeOfA) const;
  /// The node of A for a node of B.
  vsa::NodeView inA(vsa::NodeView nodeOfB) const;

 private:
  void pair(vsa::NodeView nodeOfA, vsa::NodeView nodeOfB);
  void pairByName(vsa::SceneView a, vsa::SceneView b);
  void pairByContent(vsa::SceneView a, vsa::SceneView b, const std::vector<std::string>& ignored);

  std::vector<vsa::NodeView> ofA_, ofB_;  // the counterpart of each node, by its slot
};

}  // namespace vsa_tools
