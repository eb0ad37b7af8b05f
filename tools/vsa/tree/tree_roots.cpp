#include "tools/vsa/tree/tree_roots.h"

#include "tools/vsa/common/scene/name_pattern.h"
#include "tools/vsa/common/scene/node_links.h"

namespace vsa_tools {

namespace {

/// Finds the roots of a scene without patterns.
class RootSearch {
 public:
  explicit RootSearch(vsa::SceneView scene)
      : scene_(scene), isTarget_(slotCount(scene)), isReached_(slotCount(scene)) {}

  std::vector<vsa::NodeView> roots() {
    for (const vsa::NodeView node : scene_.nodes()) {
      forEachLink(
          node, [&](const InputPlace&, vsa::NodeView target) { isTarget_[slotOf(target)] = true; });
    }
    for (const vsa::NodeView node : scene_.nodes()) {
      if (!isTarget_[slotOf(node)]) reachFrom(node);
    }
    std::vector<vsa::NodeView> roots;
    for (const vsa::NodeView node : scene_.nodes()) {
      const bool isUnreached = !isReached_[slotOf(node)];
      if (isUnreached) reachFrom(node);
      if (isUnreached || !isTarget_[slotOf(node)]) roots.push_back(node);
    }
    return roots;
  }

 private:
  void reach(vsa::NodeView node) {
    if (isReached_[slotOf(node)]) return;
    isReached_[slotOf(node)] = true;
    open_.push_back(node);
  }

  void reachFrom(vsa::NodeView root) {
    reach(root);
    while (!open_.empty()) {
      const vsa::NodeView node = open_.back();
      open_.pop_back();
      forEachLink(node, [&](const InputPlace&, vsa::NodeView target) { reach(target); });
    }
  }

  vsa::SceneView scene_;
  std::vector<bool> isTarget_, isReached_;  // a bit for the node in each slot
  std::vector<vsa::NodeView> open_;         // the reached nodes whose links are not followed yet
};

bool isChosen(vsa::NodeView node, const TreeOptions& options) {
  return (options.names.empty() || matchesAny(options.names, node.name())) &&
         (options.types.empty() || matchesAny(options.types, node.type()));
}

}  // namespace

std::vector<vsa::NodeView> treeRoots(vsa::SceneView scene, const TreeOptions& options) {
  if (options.names.empty() && options.types.empty()) return RootSearch(scene).roots();
  std::vector<vsa::NodeView> roots;
  for (const vsa::NodeView node : scene.nodes()) {
    if (isChosen(node, options)) roots.push_back(node);
  }
  return roots;
}

}  // namespace vsa_tools
