// The nodes of a scene in the order of a text, in bounded memory. Internal.
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

/// A node with its name, which is copied once: Node::name makes a String of it.
struct NamedNode {
  zn::String name;
  const zn::korvo_sdk::Node* node;
};

/// The next nodes by name after `last` (null: the first ones), sorted; empty if there are none. At
/// most as many as fit into some 4 MB.
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
