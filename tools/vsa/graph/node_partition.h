// Partitions of nodes into groups. The nodes of a group have the same kinds of links.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vsa_tools {

/// A link between two nodes, given by their indices; `path` is the number of its path.
struct IndexedLink {
  std::uint32_t from, to, path;
  bool isConnection;
};

/// The group of each node, numbered from 0 in the order of the nodes.
struct NodePartition {
  std::vector<std::uint32_t> groupOf;
  std::size_t groups = 0;
};

/// Splits the groups of `types` into groups whose nodes have links of the same paths to and from
/// the same groups, then those again, as long as there are at most `maxGroups` groups: the
/// partition refinement of Hopcroft (1971) and of Weisfeiler and Leman (1968). How many links of a
/// kind a node has makes no difference.
NodePartition refinePartition(NodePartition types, const std::vector<IndexedLink>& links,
                              std::size_t maxGroups);

/// Joins the groups with the fewest nodes, so that `maxGroups` (1 or more) groups are left.
NodePartition joinRarest(const NodePartition& partition, std::size_t maxGroups);

}  // namespace vsa_tools
