// NodePrefetch: how the memory of nodes is prefetched before many of them are looked up by name.
// Internal.
//
// The reader knows a scene through its interface only, which has no such operation. So a scene of
// the library enters its NodePrefetch here, by the address of the scene. Scenes of hosts have none.
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

/// Enters the prefetch of a scene, which must be removed before the scene is destroyed. Throws
/// std::bad_alloc. All three are safe from any thread.
void addNodePrefetch(const interfaces::IScene* scene, const NodePrefetch* prefetch);
void removeNodePrefetch(const interfaces::IScene* scene) noexcept;
/// The prefetch of a scene; null if it has none.
const NodePrefetch* nodePrefetchOf(const interfaces::IScene* scene);

}  // namespace zn::korvo_sdk
