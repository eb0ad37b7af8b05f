// Tests of the cache for look-ups in a scene. After any sequence of look-ups, creations and
// removals, the results are the same as without a cache.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>

#include <vsa/model/scene.h>
#include <vsa/scene/node_type.h>
#include "tests/support/text.h"

namespace zn::korvo_sdk {
namespace {

using vsa_tests::string;
using Random = std::mt19937;

constexpr const char* NODE_NAMES[] = {"", "a", "b", "a_name_of_more_than_sixteen_characters"};
constexpr AttrType TYPES[] = {AttrType::Null, AttrType::Int, AttrType::Array};

template <class T, std::size_t COUNT>
const T& oneOf(Random& random, const T (&from)[COUNT]) {
  return from[random() % COUNT];
}

TEST(LookUps, OfNodesFollowCreationAndRemoval) {
  Random random(3);
  Scene scene;
  std::map<std::string, Node*> nodes;
  const auto expected = [&nodes](const std::string& name) {
    const auto at = nodes.find(name);
    return at == nodes.end() ? nullptr : at->second;
  };
  for (int step = 0; step < 20000; ++step) {
    const std::string name = oneOf(random, NODE_NAMES);
    const String sought = string(name);
    switch (random() % 5) {
      case 0: {
        Node* const made = scene.createNode("lamp", sought, String());
        ASSERT_EQ(made == nullptr, expected(name) != nullptr) << step;
        if (made != nullptr) nodes[name] = made;
        break;
      }
      case 1: {
        Node* const defined = scene.defineNode(sought);
        if (expected(name) != nullptr) {
          ASSERT_EQ(defined, expected(name)) << step;
        }
        nodes[name] = defined;
        break;
      }
      case 2:
        scene.removeNode(sought);
        nodes.erase(name);
        break;
      default:
        ASSERT_EQ(scene.findNode(sought), expected(name)) << step;
    }
    ASSERT_EQ(scene.nodeCount(), nodes.size());
  }
}

/// Looks up or creates an input of a node and checks the result. `inputs` contains the existing
/// inputs of the node.
void stepOfInputs(Random& random, Node& node, std::map<std::string, Input*>& inputs,
                  bool isDeclared) {
  const std::string name = oneOf(random, NODE_NAMES);
  const AttrType type = oneOf(random, TYPES);
  const String sought = string(name);
  // A node of a declared type has the Int input "a" after its first look-up, and no other input.
  if (isDeclared && name == "a" && inputs.empty()) inputs["a"] = node.input(sought);
  const auto at = inputs.find(name);
  Input* const expected = at == inputs.end() ? nullptr : at->second;
  const bool fits = expected != nullptr && (type == AttrType::Null || expected->type() == type);
  switch (random() % 4) {
    case 0:
      ASSERT_EQ(node.hasInput(sought, type), fits);
      break;
    case 1:
      ASSERT_EQ(node.input(sought), expected);
      break;
    default: {
      Input* const made = type == AttrType::Array ? node.createArray(sought, AttrType::Int)
                                                  : node.createInput(sought, type);
      if (expected != nullptr || isDeclared) {
        ASSERT_EQ(made, expected != nullptr && expected->type() == type ? expected : nullptr);
      } else {
        ASSERT_NE(made, nullptr);
        ASSERT_EQ(made->type(), type);
        inputs[name] = made;
      }
    }
  }
  ASSERT_EQ(node.inputCount(), inputs.size());
}

// Returns two names whose hashes are equal in the low 32 bits, which the inputs of a node compare
// before the names. Of a million names, more than a hundred pairs are expected.
std::pair<std::string, std::string> namesWithEqualTags() {
  std::unordered_map<std::uint32_t, std::string> names;
  for (std::uint32_t i = 0; i < 1'000'000; ++i) {
    const std::string name = std::to_string(i * 2'654'435'761U) + "_name";
    const auto tag = static_cast<std::uint32_t>(String::hashOf(name));
    const auto [at, isNew] = names.emplace(tag, name);
    if (!isNew) return {at->second, name};
  }
  return {};
}

TEST(LookUps, OfInputsTellNamesWithEqualTagsApart) {
  const auto [first, second] = namesWithEqualTags();
  ASSERT_NE(first, second);
  Scene scene;
  Node& node = *scene.createNode("lamp", "one", String());
  Input* const input = node.createInput(string(first), AttrType::Int);
  EXPECT_EQ(node.input(string(first)), input);
  EXPECT_EQ(node.input(string(second)), nullptr);
}

TEST(LookUps, OfInputsFollowCreation) {
  NodeType type;
  type.name = "look_up_lamp";
  type.inputs = {{.name = "a", .type = AttrType::Int}};
  registerNodeType(type);
  Random random(5);
  for (int round = 0; round < 500; ++round) {
    Scene scene;
    Node* const nodes[] = {scene.createNode("lamp", "one", String()),
                           scene.createNode("lamp", "two", String()),
                           scene.createNode("look_up_lamp", "declared", String())};
    std::map<std::string, Input*> inputs[3];
    for (int step = 0; step < 60; ++step) {
      const std::size_t at = random() % 3;
      ASSERT_NO_FATAL_FAILURE(stepOfInputs(random, *nodes[at], inputs[at], at == 2))
          << round << ' ' << step;
    }
  }
  unregisterNodeType("look_up_lamp");
}

}  // namespace
}  // namespace zn::korvo_sdk
