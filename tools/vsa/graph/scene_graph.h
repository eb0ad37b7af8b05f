// The nodes of a scene and their links as a graph that is small enough to be drawn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// A box of the drawing: one node, or several.
struct GraphGroup {
  /// The type of its nodes; empty for nodes of several types.
  std::string type;
  /// The name of its first node.
  std::string name;
  std::uint64_t nodes = 0;
  /// The number of the type in the order of the scene, to choose a colour.
  std::size_t typeIndex = 0;
};

/// An arrow: links from nodes of one group to nodes of another group, or of the same group.
struct GraphEdge {
  std::size_t from = 0, to = 0;
  std::uint64_t links = 0;
  /// The path of the first link from its node on, with "[]" for each index: "bones[].joint".
  std::string path;
  /// Whether there is a link with another path.
  bool hasOtherPaths = false;
  /// Whether all links are connections.
  bool isConnection = true;
};

struct SceneGraph {
  std::vector<GraphGroup> groups;
  /// The edges with the most links, sorted by groups.
  std::vector<GraphEdge> edges;
  std::uint64_t nodes = 0, links = 0;
  /// The number of links in the edges that are left out.
  std::uint64_t hiddenLinks = 0;
};

/// A graph of at most `maxGroups` (1 or more) groups and three times as many edges. If the scene
/// has more nodes, nodes of one type that are linked alike share a group, by the finest partition
/// with at most `maxGroups` groups. If there are more types than groups, the rarest types share a
/// group.
SceneGraph graphOf(vsa::SceneView scene, std::size_t maxGroups);

}  // namespace vsa_tools
