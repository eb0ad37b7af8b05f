#include "write/node_order.h"

namespace vsa::impl {

using zn::korvo_sdk::Node;

namespace {

constexpr std::size_t KEPT = std::size_t{1} << 17;

bool isBefore(const Node* a, const Node* b) {
  return a->name().view() < b->name().view();
}

}  // namespace

std::vector<const Node*> nextByName(const zn::korvo_sdk::Scene& scene, const Node* last) {
  std::vector<const Node*> nodes;
  const auto keepFirst = [&nodes] {
    if (nodes.size() <= KEPT) return;
    const auto end = nodes.begin() + KEPT;
    std::nth_element(nodes.begin(), end, nodes.end(), isBefore);
    nodes.erase(end, nodes.end());
  };
  forEachCreated(scene, [&](const Node& node) {
    if (last != nullptr && !isBefore(last, &node)) return;
    nodes.push_back(&node);
    if (nodes.size() == 2 * KEPT) keepFirst();
  });
  keepFirst();
  std::sort(nodes.begin(), nodes.end(), isBefore);
  return nodes;
}

}  // namespace vsa::impl
