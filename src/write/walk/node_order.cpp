#include "write/walk/node_order.h"

namespace vsa::impl {

using zn::korvo_sdk::Node;

namespace {

constexpr std::size_t KEPT = std::size_t{1} << 15;

bool isBefore(const NamedNode& a, const NamedNode& b) {
  return a.name.view() < b.name.view();
}

}  // namespace

std::vector<NamedNode> nextByName(const zn::korvo_sdk::Scene& scene, const NamedNode* last) {
  std::vector<NamedNode> nodes;
  const auto keepFirst = [&nodes] {
    if (nodes.size() <= KEPT) return;
    const auto end = nodes.begin() + KEPT;
    std::nth_element(nodes.begin(), end, nodes.end(), isBefore);
    nodes.erase(end, nodes.end());
  };
  forEachCreated(scene, [&](const Node& node) {
    const NamedNode named{node.name(), &node};
    if (last != nullptr && !isBefore(*last, named)) return;
    nodes.push_back(named);
    if (nodes.size() == 2 * KEPT) keepFirst();
  });
  keepFirst();
  std::sort(nodes.begin(), nodes.end(), isBefore);
  return nodes;
}

}  // namespace vsa::impl
