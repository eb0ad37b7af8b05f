#include "tools/vsa/graph/node_partition.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

namespace vsa_tools {

namespace {

/// The maximum number of rounds. Each round compares the surroundings of two nodes one link
/// further. So a difference that is more than eight links away does not put two nodes into
/// different groups.
constexpr int MAX_ROUNDS = 8;

/// The kinds of links of a node, sorted and without duplicates.
using Signature = std::vector<std::uint64_t>;

std::uint64_t linkKind(std::uint32_t path, std::uint32_t group, bool isIncoming) {
  return std::uint64_t{group} << 32 | std::uint64_t{path} << 1 | isIncoming;
}

std::vector<Signature> signaturesOf(const NodePartition& partition,
                                    const std::vector<IndexedLink>& links) {
  std::vector<Signature> signatures(partition.groupOf.size());
  for (const IndexedLink& link : links) {
    signatures[link.from].push_back(linkKind(link.path, partition.groupOf[link.to], false));
    signatures[link.to].push_back(linkKind(link.path, partition.groupOf[link.from], true));
  }
  for (Signature& signature : signatures) {
    std::sort(signature.begin(), signature.end());
    signature.erase(std::unique(signature.begin(), signature.end()), signature.end());
  }
  return signatures;
}

NodePartition splitOnce(const NodePartition& partition, const std::vector<IndexedLink>& links) {
  std::vector<Signature> signatures = signaturesOf(partition, links);
  std::map<std::pair<std::uint32_t, Signature>, std::uint32_t> numbers;
  NodePartition split;
  split.groupOf.reserve(signatures.size());
  for (std::size_t i = 0; i < signatures.size(); ++i) {
    const auto next = static_cast<std::uint32_t>(numbers.size());
    const auto [place, isNew] =
        numbers.try_emplace({partition.groupOf[i], std::move(signatures[i])}, next);
    split.groupOf.push_back(place->second);
  }
  split.groups = numbers.size();
  return split;
}

}  // namespace

NodePartition refinePartition(NodePartition partition, const std::vector<IndexedLink>& links,
                              std::size_t maxGroups) {
  for (int round = 0; round < MAX_ROUNDS; ++round) {
    NodePartition finer = splitOnce(partition, links);
    if (finer.groups > maxGroups || finer.groups == partition.groups) break;
    partition = std::move(finer);
  }
  return partition;
}

NodePartition joinSmallest(const NodePartition& partition, std::size_t maxGroups) {
  if (partition.groups <= maxGroups) return partition;
  std::vector<std::size_t> sizes(partition.groups), order(partition.groups);
  for (const std::uint32_t group : partition.groupOf) ++sizes[group];
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return sizes[a] > sizes[b]; });
  std::vector<std::uint32_t> numbers(partition.groups);
  for (std::size_t i = 0; i < order.size(); ++i) {
    numbers[order[i]] = static_cast<std::uint32_t>(std::min(i, maxGroups - 1));
  }
  NodePartition joined{partition.groupOf, maxGroups};
  for (std::uint32_t& group : joined.groupOf) group = numbers[group];
  return joined;
}

}  // namespace vsa_tools
