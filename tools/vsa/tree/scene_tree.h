// The scene as a tree of references and connections.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vsa/view.h>
#include "tools/scene_text/text_output.h"

namespace vsa_tools {

struct TreeOptions {
  /// Shows the values of inputs, and not only links.
  bool inputs = false;
  /// The maximum number of links to follow below a root; no maximum if it is not set.
  std::optional<std::uint64_t> depth;
  /// The roots are the nodes that match one pattern of each list that is not empty. Without
  /// patterns they are the nodes without links to them, and one node of each cycle that cannot be
  /// reached from these.
  std::vector<std::string> names, types;
};

/// Writes a line for each root, and below it a line for each link, followed by what the linked node
/// links to. The links of a node are shown once: a later link to it says "shown above", and a link
/// from a node below it says "circle". Returns the number of roots. Does not recurse; the output
/// grows with the number of links, however long the chains of links are.
std::uint64_t printTree(vsa::SceneView scene, const TreeOptions& options, TextOutput& out);

}  // namespace vsa_tools
