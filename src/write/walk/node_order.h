// Visits the nodes of a scene in the order in which they are written. The order by name takes a
// limited amount of memory (see nextByName). Internal.
#pragma once

#include <cstdint>
#include <vector>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>
#include <vsa/write_options.h>

namespace vsa::impl {

/// Calls `visit(const Node&)` for each node, in the order of creation.
template <class Visit>
void forEachCreated(const zn::korvo_sdk::Scene& scene, const Visit& visit) {
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    if (const zn::korvo_sdk::Node* const node = scene.nodeAt(slot)) visit(*node);
  }
}

/// A node with a copy of its name. The copy saves time, because each call of Node::name creates a
/// String.
struct NamedNode {
  zn::String name;
  const zn::korvo_sdk::Node* node;
};

/// Returns the nodes after `last`, sorted by name. If `last` is null, returns the first nodes. The
/// result has at most 32768 nodes, so that a large scene takes a limited amount of memory. It is
/// empty if there are no more nodes.
std::vector<NamedNode> nextByName(const zn::korvo_sdk::Scene& scene, const NamedNode* last);

/// Calls `visit(const Node&)` for each node, in the order `order`.
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
