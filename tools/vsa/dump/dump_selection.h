// The selection of the nodes and inputs for a dump.
#pragma once

#include <string>
#include <vector>

#include <vsa/view.h>
#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

/// Patterns of nodes, "lamp*", and of inputs, "rig.bones[?].at"; see matchesPattern().
class DumpSelection {
 public:
  /// The part of a pattern after its first period selects inputs by their paths. Without patterns,
  /// everything is selected.
  explicit DumpSelection(const std::vector<std::string>& patterns);

  /// The inputs of `node` whose paths match a pattern, each with its path as its name, or the whole
  /// node. If an input matches, its elements and members are not selected again.
  ChosenInputs inputsOf(vsa::NodeView node) const;

  /// Whether the patterns select anything in the scene.
  bool matches(vsa::SceneView scene) const;

 private:
  struct Pattern {
    std::string node;
    std::string path;  // empty if the whole node is selected
  };
  std::vector<Pattern> patterns_;
};

}  // namespace vsa_tools
