// NodePrefetch: prefetches the memory of nodes before they are looked up by name. Internal.
//
// The reader knows a scene through its interface only, which has no such operation, and it does not
// depend on the library's own scene. So that scene sets a function here, which recognises it. Other
// scenes have no prefetch.
#pragma once

#include <cstdint>

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

/// Hints. They change nothing that can be observed.
class NodePrefetch {
 public:
  /// Prefetches the place where a name with this hash is looked up.
  virtual void prefetchSlot(std::uint64_t nameHash) const noexcept = 0;
  /// Prefetches the node of a name with this hash. Its slot should be in the cache by now.
  virtual void prefetchNode(std::uint64_t nameHash) const noexcept = 0;

 protected:
  ~NodePrefetch() = default;
};

/// The prefetch of a scene; null if it has none.
using NodePrefetchOf = const NodePrefetch* (*)(const interfaces::IScene& scene) noexcept;

/// Sets the function that `nodePrefetchOf` calls. Every scene of the library sets the same one.
void setNodePrefetch(NodePrefetchOf function) noexcept;
const NodePrefetch* nodePrefetchOf(const interfaces::IScene& scene) noexcept;

}  // namespace zn::korvo_sdk
