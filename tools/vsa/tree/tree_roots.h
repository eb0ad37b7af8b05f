// The roots of the tree that vsa tree prints.
#pragma once

#include <vector>

#include <vsa/view.h>
#include "tools/vsa/tree/scene_tree.h"

namespace vsa_tools {

/// Returns the roots that the options select, in the order of the scene. See TreeOptions.
std::vector<vsa::NodeView> treeRoots(vsa::SceneView scene, const TreeOptions& options);

}  // namespace vsa_tools
