#include "write/walk/node_order.h"

#include <algorithm>

namespace vsa::impl {

using zn::korvo_sdk::Node;

namespace {

// The maximum number of nodes that a pass over the scene returns.
constexpr std::size_t NODES_PER_PASS = std::size_t{1} << 15;

bool isBefore(const NamedNode& a, const NamedNode& b) {
  return a.name.view() < b.name.view();
}

}  // namespace

std::vector<NamedNode> nextByName(const zn::korvo_sdk::Scene& scene, const NamedNode* last) {
  std::vector<NamedNode> nodes;
  const auto keepFirst = [&nodes] {
    if (nodes.size() <= NODES_PER_PASS) return;
    const auto end = nodes.begin() + NODES_PER_PASS;
    std::nth_element(nodes.begin(), end, nodes.end(), isBefore);
    nodes.erase(end, nodes.end());
  };
  forEachCreated(scene, [&](const Node& node) {
    const NamedNode named{node.name(), &node};
    if (last != nullptr && !isBefore(*last, named)) return;
    nodes.push_back(named);
    if (nodes.size() == 2 * NODES_PER_PASS) keepFirst();
  });
  keepFirst();
  std::sort(nodes.begin(), nodes.end(), isBefore);
  return nodes;
}

}  // namespace vsa::impl
