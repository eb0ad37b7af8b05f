// Prints a scene as a tree of references and connections.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vsa/view.h>
#include "tools/scene_text/text_output.h"

namespace vsa_tools {

struct TreeOptions {
  /// Whether the values of inputs are shown, too, not only links.
  bool inputs = false;
  /// The maximum number of links from a root to a node in its tree. No maximum if it is not set.
  std::optional<std::uint64_t> depth;
  /// Patterns for the names and types of the roots. A root matches one pattern of each list that is
  /// not empty. If both lists are empty, the roots are the nodes without links to them. A node that
  /// cannot be reached from these nodes, because it is in a cycle or only cycles lead to it, is a
  /// root, too, unless an earlier such root reaches it.
  std::vector<std::string> names, types;
};

/// Prints a tree for each root and returns the number of roots. Below a node there is a line for
/// each of its links. The links of the target follow that line. The lines of a node are shown only
/// once: a root whose lines are already shown below an earlier root has no tree of its own, and a
/// later link to a node ends in "shown above". A link to a node whose lines are not complete yet
/// ends in "circle". Lines beyond the maximum depth are replaced by "..." after their node. With a
/// maximum depth, the lines of a node are shown where the fewest links lead to it from a root, and
/// an earlier link to it ends in "shown below". Each root has its own tree then. A link to a node
/// without lines ends in none of these. Does not recurse. The size of the output is
/// proportional to the number of its lines, even for long chains.
std::uint64_t printTree(vsa::SceneView scene, const TreeOptions& options, TextOutput& out);

}  // namespace vsa_tools
