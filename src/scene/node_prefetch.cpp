#include "scene/node_prefetch.h"

#include <atomic>

namespace zn::korvo_sdk {

namespace {

std::atomic<NodePrefetchOf> prefetchOf{nullptr};

}  // namespace

void setNodePrefetch(NodePrefetchOf function) noexcept {
  prefetchOf.store(function, std::memory_order_relaxed);
}

const NodePrefetch* nodePrefetchOf(const interfaces::IScene& scene) noexcept {
  const NodePrefetchOf function = prefetchOf.load(std::memory_order_relaxed);
  return function == nullptr ? nullptr : function(scene);
}

}  // namespace zn::korvo_sdk
