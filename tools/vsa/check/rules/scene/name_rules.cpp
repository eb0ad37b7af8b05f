// Rules about names of nodes: names that are nearly the same, and nodes that no link refers to.
#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/rules/scene/input_visitor.h"
#include "tools/vsa/check/rules/scene/scene_rules.h"

namespace vsa_tools {

namespace {

using vsa::NodeView;

// The minimum length of compared names. Shorter names often differ in one letter intentionally.
constexpr std::size_t MIN_NAME = 4;

void addSimilar(SceneFindings& found, RuleId rule, std::string_view name, std::string_view other) {
  found.add({rule, std::string(name),
             "the nodes " + std::string(other) + " and " + std::string(name) +
                 (rule == RuleId::SimilarNames ? " differ by one letter" : " differ by case only"),
             "if they are one node, write its name the same way everywhere",
             SceneFinding::Place::Node});
}

void findSameButCase(SceneFindings& found) {
  std::unordered_map<std::string, std::string_view> names;
  for (const NodeView node : found.input().scene.nodes()) {
    const auto [other, isNew] = names.try_emplace(loweredName(node.name()), node.name());
    if (!isNew) addSimilar(found, RuleId::NamesDifferByCase, node.name(), other->second);
  }
}

// Returns whether the character at `i` is not a digit. Many names differ only in a digit.
bool isNoDigitAt(std::string_view name, std::size_t i) {
  return !(name[i] >= '0' && name[i] <= '9');
}

// Finds names of the same length that differ in one character that is not a digit. Without that
// character they are equal, so the key is the name without the character, together with its
// position.
void findSameButLetter(SceneFindings& found) {
  std::unordered_map<std::string, std::string_view> names;
  for (const NodeView node : found.input().scene.nodes()) {
    const std::string_view name = node.name();
    bool isReported = name.size() < MIN_NAME;
    for (std::size_t i = 0; i < name.size() && !isReported; ++i) {
      if (!isNoDigitAt(name, i)) continue;
      std::string key = std::to_string(i) + ' ' + std::string(name);
      key.erase(key.size() - name.size() + i, 1);
      const auto [other, isNew] = names.try_emplace(std::move(key), name);
      if (isNew) continue;
      addSimilar(found, RuleId::SimilarNames, name, other->second);
      isReported = true;
    }
  }
}

void findUnnamed(SceneFindings& found) {
  std::unordered_set<const void*> named;
  for (const NodeView node : found.input().scene.nodes()) {
    visitInputs(node, [&](const vsa::InputView& input, vsa::ValueType) {
      if (const NodeView target = input.node()) named.insert(target.plain());
      if (const vsa::ConnectionView connection = input.connection()) {
        named.insert(connection.node().plain());
      }
    });
  }
  for (const NodeView node : found.input().scene.nodes()) {
    if (named.contains(node.plain())) continue;
    found.add({RuleId::UnusedNode, std::string(node.name()),
               "no reference and no connection names the node " + std::string(node.name()),
               "remove the node, or refer to it", SceneFinding::Place::Node});
  }
}

}  // namespace

void findNameProblems(SceneFindings& found) {
  if (found.isEnabled(RuleId::NamesDifferByCase)) findSameButCase(found);
  if (found.isEnabled(RuleId::SimilarNames)) findSameButLetter(found);
  if (found.isEnabled(RuleId::UnusedNode)) findUnnamed(found);
}

}  // namespace vsa_tools
