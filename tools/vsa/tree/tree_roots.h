// The roots of the tree that vsa tree prints.
#pragma once

#include <vector>

#include <vsa/view.h>
#include "tools/vsa/tree/scene_tree.h"

namespace vsa_tools {

/// The roots that the options choose, in the order of the scene, see TreeOptions.
std::vector<vsa::NodeView> treeRoots(vsa::SceneView scene, const TreeOptions& options);

}  // namespace vsa_tools
