#include "tools/vsa/extract/scene_part.h"

#include <algorithm>

#include "tools/vsa/common/scene/name_pattern.h"
#include "tools/vsa/common/scene/node_links.h"

namespace vsa_tools {

namespace {

/// Finds all nodes that the kept nodes link to, directly or through other nodes.
class Closure {
 public:
  Closure(vsa::SceneView scene, const std::vector<std::string>& without)
      : without_(without), isKept_(slotCount(scene)) {}

  void add(vsa::NodeView node) {
    if (isKept_[slotOf(node)] || matchesAny(without_, node.name())) return;
    isKept_[slotOf(node)] = true;
    open_.push_back(node);
  }

  void follow() {
    while (!open_.empty()) {
      const vsa::NodeView node = open_.back();
      open_.pop_back();
      forEachLink(node, [this](const InputPlace&, vsa::NodeView target) { add(target); });
    }
  }

  bool isKept(vsa::NodeView node) const { return isKept_[slotOf(node)]; }

 private:
  const std::vector<std::string>& without_;
  std::vector<bool> isKept_;  // whether the node in each slot is kept
  std::vector<vsa::NodeView> open_;
};

/// Returns whether the input is an empty array. It has no elements and no element type, or its
/// elements are all empty arrays.
bool isEmptyArray(vsa::InputView input) {
  if (input.type() != vsa::ValueType::Array) return false;
  const vsa::ValueType type = input.elementType();
  if (type != vsa::ValueType::Null && type != vsa::ValueType::Array) return false;
  const auto elements = input.elements();
  if (elements.empty()) return type == vsa::ValueType::Null;
  return std::all_of(elements.begin(), elements.end(), isEmptyArray);
}

std::vector<std::string> namesOfEmptyArrays(const auto& inputs) {
  std::vector<std::string> names;
  for (const vsa::InputView input : inputs) {
    if (isEmptyArray(input)) names.emplace_back(input.name());
  }
  return names;
}

/// Removes the members that are empty arrays from the objects in `open`, and from the objects
/// inside them.
void removeFromObjects(std::vector<vsa::Input> open) {
  while (!open.empty()) {
    const vsa::Input input = open.back();
    open.pop_back();
    for (const std::string& name : namesOfEmptyArrays(input.members())) {
      input.remove(name).orThrow();
    }
    for (const vsa::InputView member : input.members()) open.push_back(input[member.name()]);
    const vsa::ValueType type = input.elementType();
    if (type != vsa::ValueType::Object && type != vsa::ValueType::Array) continue;
    for (std::uint64_t i = 0; i < input.elements().size(); ++i) open.push_back(input[i]);
  }
}

}  // namespace

std::vector<std::string> keepPart(vsa::Scene& scene, const std::vector<std::string>& names,
                                  const std::vector<std::string>& without) {
  Closure part(scene, without);
  std::vector<bool> isFound(names.size());
  for (const vsa::NodeView node : scene.nodes()) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (!matchesPattern(names[i], node.name())) continue;
      isFound[i] = true;
      part.add(node);
    }
  }
  part.follow();
  std::vector<vsa::NodeView> others;
  for (const vsa::NodeView node : scene.nodes()) {
    if (!part.isKept(node)) others.push_back(node);
  }
  for (const vsa::NodeView node : others) scene.removeNode(node).orThrow();
  std::vector<std::string> missing;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (!isFound[i]) missing.push_back(names[i]);
  }
  return missing;
}

void removeEmptyArrays(vsa::Scene& scene) {
  for (const vsa::NodeView view : scene.nodes()) {
    const vsa::Node node = scene[view.name()];
    for (const std::string& name : namesOfEmptyArrays(node.inputs())) node.remove(name).orThrow();
    std::vector<vsa::Input> inputs;
    for (const vsa::InputView input : node.inputs()) inputs.push_back(node[input.name()]);
    removeFromObjects(std::move(inputs));
  }
}

void removeBadComments(vsa::Scene& scene) {
  std::vector<std::string> comments;
  for (const std::string_view comment : scene.comments()) comments.emplace_back(comment);
  scene.clearHeader().orThrow();
  for (const std::string& comment : comments) {
    const vsa::Status status = scene.addComment(comment);
    if (status.error() != vsa::EditError::BadVersionComment) status.orThrow();
  }
}

}  // namespace vsa_tools
