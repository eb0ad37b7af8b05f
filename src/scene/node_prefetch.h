// NodePrefetch: prefetches the memory of nodes before they are looked up by name. Internal.
//
// The reader calls a scene through its interface, which has no operation for this, and does not
// depend on the library's own scene. That scene therefore registers a function here, which
// recognises its objects. Other scenes have no prefetch.
#pragma once

#include <cstdint>

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

/// Hints without observable effects.
class NodePrefetch {
 public:
  /// Prefetches the place where a name with this hash is looked up.
  virtual void prefetchSlot(std::uint64_t nameHash) const noexcept = 0;
  /// Prefetches the node of a name with this hash. Call prefetchSlot earlier, so that the slot is
  /// in the cache.
  virtual void prefetchNode(std::uint64_t nameHash) const noexcept = 0;

 protected:
  ~NodePrefetch() = default;
};

/// The prefetch of a scene; null if it has none.
using NodePrefetchOf = const NodePrefetch* (*)(const interfaces::IScene& scene) noexcept;

/// Sets the function that `nodePrefetchOf` calls. All scenes of the library set the same function.
void setNodePrefetch(NodePrefetchOf function) noexcept;
const NodePrefetch* nodePrefetchOf(const interfaces::IScene& scene) noexcept;

}  // namespace zn::korvo_sdk
