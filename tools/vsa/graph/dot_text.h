// A graph in DOT, the language of Graphviz.
#pragma once

#include <string>

#include "tools/vsa/graph/scene_graph.h"

namespace vsa_tools {

/// The graph with `title` below it. A box is one node, or a group with its number of nodes. Its
/// colour depends on the type. An arrow leads from the node that has the input to the node that the
/// input refers to. The arrow of a connection is dashed. The text is valid UTF-8, whatever the
/// names of the scene are.
std::string dotText(const SceneGraph& graph, const std::string& title);

}  // namespace vsa_tools
