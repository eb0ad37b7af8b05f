// The graph of a scene: its nodes and their links, reduced to a size that can be drawn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// A box of the drawing. It represents one node or several nodes.
struct GraphGroup {
  /// The type of the nodes. Empty if they have several types.
  std::string type;
  /// The name of the first node.
  std::string name;
  std::uint64_t nodes = 0;
  /// The number of the type of the first node, in the order of the scene. It determines the colour.
  std::size_t typeIndex = 0;
};

/// An arrow of the drawing: all references, or all connections, from the nodes of one group to the
/// nodes of the same group or of another one.
struct GraphEdge {
  std::size_t from = 0, to = 0;
  std::uint64_t links = 0;
  /// The path of the first link without its node, with "[]" for each index: "bones[].joint".
  std::string path;
  /// Whether the arrow also represents links with other paths.
  bool hasOtherPaths = false;
  /// Whether the links are connections. A connection to the node that the same input also refers to
  /// counts as a reference.
  bool isConnection = false;
};

struct SceneGraph {
  std::vector<GraphGroup> groups;
  /// The edges with the most links, sorted by their groups. Of edges with the same number of links,
  /// the last ones are omitted first.
  std::vector<GraphEdge> edges;
  std::uint64_t nodes = 0, links = 0;
  /// The number of links in the edges that were omitted.
  std::uint64_t hiddenLinks = 0;
};

/// Returns a graph of at most `maxGroups` groups and at most 3 * `maxGroups` edges. `maxGroups`
/// must be at least 1. If the scene has at most `maxGroups` nodes, each node is a group. Otherwise,
/// a group has nodes of the same type and with the same kinds of links, as far as the maximum
/// number of groups allows it (see refinePartition()). If there are more types than groups, the
/// rarest types share a group.
SceneGraph graphOf(vsa::SceneView scene, std::size_t maxGroups);

}  // namespace vsa_tools
