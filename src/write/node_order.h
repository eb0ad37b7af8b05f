// The nodes of a scene in the order of a text, in bounded memory. Internal.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

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

/// The first nodes by name of those whose names are behind `last`, sorted; empty if there is none.
/// At most as many as fit two megabytes.
std::vector<const zn::korvo_sdk::Node*> nextByName(const zn::korvo_sdk::Scene& scene,
                                                   const zn::korvo_sdk::Node* last);

/// Calls `visit(const Node&)` for each node.
template <class Visit>
void forEachNode(const zn::korvo_sdk::Scene& scene, NodeOrder order, const Visit& visit) {
  if (order == NodeOrder::Created) return forEachCreated(scene, visit);
  auto nodes = nextByName(scene, nullptr);
  while (!nodes.empty()) {
    for (const zn::korvo_sdk::Node* const node : nodes) visit(*node);
    nodes = nextByName(scene, nodes.back());
  }
}

}  // namespace vsa::impl
