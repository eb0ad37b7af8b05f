// dotText(): writes a graph in DOT, the language of Graphviz.
#pragma once

#include <string>

#include "tools/vsa/graph/scene_graph.h"

namespace vsa_tools {

/// Returns the graph in DOT, with `title` below it. A box is one node, or a group with the number
/// of its nodes. Its colour depends on the type, and is grey for a group of several types. An arrow
/// leads from the node with the input to the node that the input refers to or is connected to. It
/// is dashed if all its links are connections. The result is valid UTF-8 even if names of the scene
/// are not.
std::string dotText(const SceneGraph& graph, const std::string& title);

}  // namespace vsa_tools
