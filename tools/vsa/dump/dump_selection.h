// The selection of the nodes and inputs for a dump.
#pragma once

#include <string>
#include <vector>

#include <vsa/view.h>
#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

/// Patterns for nodes, such as "lamp*", and for inputs, such as "rig.bones[?].at". matchesPattern()
/// describes them.
class DumpSelection {
 public:
  /// The part of a pattern before its first period selects nodes, and the part after it their
  /// inputs by path. A pattern without such a path selects whole nodes. Without patterns,
  /// everything is selected.
  explicit DumpSelection(const std::vector<std::string>& patterns);

  /// Returns the selected inputs of `node`: those whose paths match a pattern for this node. No
  /// list is returned if the whole node is selected. The name of each input is its path. The
  /// elements and members of a selected input are not selected separately.
  ChosenInputs inputsOf(vsa::NodeView node) const;

  /// Returns whether the patterns select anything in the scene. True without patterns.
  bool matches(vsa::SceneView scene) const;

 private:
  struct Pattern {
    std::string node;
    std::string path;  // empty if the pattern selects the whole node
  };
  std::vector<Pattern> patterns_;
};

}  // namespace vsa_tools
