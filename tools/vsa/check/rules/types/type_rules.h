// Rules about nodes whose types are described with --types.
#pragma once

#include "tools/vsa/check/rules/scene/scene_rules.h"

namespace vsa_tools {

/// Compares the nodes of the scene with the types of the input. Does nothing without such types.
void findTypeProblems(SceneFindings& found);

}  // namespace vsa_tools
