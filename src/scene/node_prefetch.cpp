#include "scene/node_prefetch.h"

#include <mutex>
#include <unordered_map>

namespace zn::korvo_sdk {

namespace {

struct Table {
  std::mutex mutex;
  std::unordered_map<const interfaces::IScene*, const NodePrefetch*> rows;
};

// Never destroyed: a static scene may outlive it.
Table& table() {
  static Table& made = *new Table;
  return made;
}

}  // namespace

void addNodePrefetch(const interfaces::IScene* scene, const NodePrefetch* prefetch) {
  const std::lock_guard lock(table().mutex);
  table().rows[scene] = prefetch;
}

void removeNodePrefetch(const interfaces::IScene* scene) noexcept {
  const std::lock_guard lock(table().mutex);
  table().rows.erase(scene);
}

const NodePrefetch* nodePrefetchOf(const interfaces::IScene* scene) {
  const std::lock_guard lock(table().mutex);
  const auto found = table().rows.find(scene);
  return found == table().rows.end() ? nullptr : found->second;
}

}  // namespace zn::korvo_sdk
