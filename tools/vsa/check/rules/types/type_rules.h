// Rules about nodes whose types are described: see --types.
#pragma once

#include "tools/vsa/check/rules/scene/scene_rules.h"

namespace vsa_tools {

/// Compares the nodes of the scene with the types of the input. Does nothing if there are none.
void findTypeProblems(SceneFindings& found);

}  // namespace vsa_tools
