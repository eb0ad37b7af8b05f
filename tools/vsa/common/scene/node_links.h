// Functions about the links of a node, and about its slot.
#pragma once

#include <cstddef>

#include <vsa/view.h>
#include "tools/vsa/common/scene/input_walk.h"

namespace vsa_tools {

/// Returns the slot of a node: its index among all nodes that the scene has created. The slot is
/// less than slotCount().
inline std::size_t slotOf(vsa::NodeView node) {
  return static_cast<std::size_t>(node.plain()->slot());
}

inline std::size_t slotCount(vsa::SceneView scene) {
  return scene.plain() != nullptr ? static_cast<std::size_t>(scene.plain()->nodeSlots()) : 0;
}

/// Calls `visit(const InputPlace&, vsa::NodeView target)` for each reference and each connection of
/// the inputs of the node, and of the elements and members inside them. Leaves out null references.
template <class Visit>
void forEachLink(vsa::NodeView node, Visit visit) {
  walkInputs(node, [&](const InputPlace& place) {
    if (const vsa::NodeView target = place.input.node()) visit(place, target);
    if (const vsa::ConnectionView source = place.input.connection()) visit(place, source.node());
    return true;
  });
}

}  // namespace vsa_tools
