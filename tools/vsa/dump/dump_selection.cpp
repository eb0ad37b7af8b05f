#include "tools/vsa/dump/dump_selection.h"

#include "tools/vsa/common/scene/input_walk.h"
#include "tools/vsa/common/scene/name_pattern.h"

namespace vsa_tools {

DumpSelection::DumpSelection(const std::vector<std::string>& patterns) {
  for (const std::string& pattern : patterns) {
    const std::size_t point = pattern.find('.');
    const bool hasPath = point != std::string::npos;
    patterns_.push_back({pattern.substr(0, point), hasPath ? pattern.substr(point + 1) : ""});
  }
}

ChosenInputs DumpSelection::inputsOf(vsa::NodeView node) const {
  std::vector<std::string> paths;
  bool isWhole = patterns_.empty();
  for (const Pattern& pattern : patterns_) {
    if (!matchesPattern(pattern.node, node.name())) continue;
    if (pattern.path.empty()) isWhole = true;
    paths.push_back(pattern.path);
  }
  if (isWhole) return std::nullopt;
  std::vector<ChosenInput> chosen;
  if (paths.empty()) return chosen;
  walkInputs(node, [&](const InputPlace& place) {
    if (!matchesAny(paths, place.path)) return true;
    // The dump requires an input that is not const, but does not change it. Views return only a
    // const input.
    auto* const input = const_cast<zn::korvo_sdk::Input*>(place.input.plain());
    chosen.push_back({std::string(place.path), input});
    return false;
  });
  return chosen;
}

bool DumpSelection::matches(vsa::SceneView scene) const {
  for (const vsa::NodeView node : scene.nodes()) {
    const ChosenInputs chosen = inputsOf(node);
    if (!chosen || !chosen->empty()) return true;
  }
  return patterns_.empty();
}

}  // namespace vsa_tools
