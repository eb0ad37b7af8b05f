// Visits the nodes of a scene in the order in which they are written, in bounded memory. Internal.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>
#include <vsa/write_options.h>

namespace vsa::impl {

/// Calls `visit(const Node&)` for each node in creation order.
template <class Visit>
void forEachCreated(const zn::korvo_sdk::Scene& scene, const Visit& visit) {
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    if (const zn::korvo_sdk::Node* const node = scene.nodeAt(slot)) visit(*node);
  }
}

/// A node and a copy of its name, because each call of Node::name creates a String.
struct NamedNode {
  zn::String name;
  const zn::korvo_sdk::Node* node;
};

/// The nodes that follow `last` in the order of names, sorted; the first ones if `last` is null.
/// Empty if there are none. Returns as many as fit into about 4 MB.
std::vector<NamedNode> nextByName(const zn::korvo_sdk::Scene& scene, const NamedNode* last);

/// Calls `visit(const Node&)` for each node, in the given order.
template <class Visit>
void forEachNode(const zn::korvo_sdk::Scene& scene, NodeOrder order, const Visit& visit) {
  if (order == NodeOrder::Created) return forEachCreated(scene, visit);
  auto nodes = nextByName(scene, nullptr);
  while (!nodes.empty()) {
    for (const NamedNode& named : nodes) visit(*named.node);
    const NamedNode last = nodes.back();
    nodes = nextByName(scene, &last);
  }
}

}  // namespace vsa::impl
