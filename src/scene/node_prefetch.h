// NodePrefetch: prefetches the memory of nodes before they are looked up by name. Internal.
//
// The scene interface has no operation for it. So each scene of the library registers its
// NodePrefetch in a table of the process, under the address of the scene. A host's scene has none.
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

/// Registers the prefetch of a scene, which must be removed before the scene is destroyed. Throws
/// std::bad_alloc. All three are safe from any thread.
void addNodePrefetch(const interfaces::IScene* scene, const NodePrefetch* prefetch);
void removeNodePrefetch(const interfaces::IScene* scene) noexcept;
/// The prefetch of a scene; null if it has none.
const NodePrefetch* nodePrefetchOf(const interfaces::IScene* scene);

}  // namespace zn::korvo_sdk
