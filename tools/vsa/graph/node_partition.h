// Partitions the nodes of a scene into groups of nodes with the same kinds of links.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vsa_tools {

/// A link from one node to another. `from` and `to` are the indices of the nodes, and `path` is the
/// number of the link's path.
struct IndexedLink {
  std::uint32_t from, to, path;
  bool isConnection;
};

/// The group of each node. Groups are numbered from 0.
struct NodePartition {
  std::vector<std::uint32_t> groupOf;
  std::size_t groups = 0;
};

/// Splits the groups of a partition into smaller groups. In each round, nodes of a group stay
/// together if they have links of the same paths to and from the same groups of the round before.
/// The number of such links makes no difference. There are at most eight rounds. The result is that
/// of the last round that had an effect and did not give more than `maxGroups` groups. This is the
/// partition refinement of Hopcroft (1971) and of Weisfeiler and Leman (1968).
NodePartition refinePartition(NodePartition partition, const std::vector<IndexedLink>& links,
                              std::size_t maxGroups);

/// Joins the groups with the fewest nodes into one, so that there are at most `maxGroups` groups.
/// `maxGroups` must be at least 1.
NodePartition joinSmallest(const NodePartition& partition, std::size_t maxGroups);

}  // namespace vsa_tools
