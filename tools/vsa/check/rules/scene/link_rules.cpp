// Rules about circles of references and of connections, also those of a node with itself.
#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tools/vsa/check/rules/scene/scene_rules.h"
#include "tools/vsa/check/text/key_map.h"

namespace vsa_tools {

namespace {

using vsa::InputView;
using vsa::NodeView;

/// A graph whose nodes are numbers. Each edge stores the input that contains the link.
class LinkGraph {
 public:
  void add(const NodeView& from, const NodeView& to, const InputView& input) {
    const std::size_t source = numberOf(from);
    const std::size_t target = numberOf(to);
    edges_[source].push_back({target, input});
  }

  /// The links of a circle. Only the first ones are stored, because a message shows no more.
  struct Circle {
    std::vector<InputView> first;
    InputView closing;  // the last link
    std::size_t size;
  };

  /// The maximum number of links in Circle::first.
  static constexpr std::size_t MAX_FIRST = 5;

  /// Calls `found(circle)` once for each link that closes a circle in a depth-first search.
  template <class Found>
  void findCircles(const Found& found);

 private:
  enum class State : char { New, Open, Done };
  struct Edge {
    std::size_t to;
    InputView input;
  };
  struct Step {
    std::size_t node;
    std::size_t next;  // the index of the next edge to follow
  };

  Circle circleOf(const std::vector<Step>& path, std::size_t begin) const;

  std::size_t numberOf(const NodeView& node) {
    const auto address = reinterpret_cast<std::uintptr_t>(node.plain());
    const auto [number, isNew] = numbers_.insert(keyOfElement(0, address), edges_.size());
    if (isNew) edges_.emplace_back();
    return number;
  }

  // Small at first, because there is a graph for each name of an input.
  KeyMap<std::size_t> numbers_{4};
  std::vector<std::vector<Edge>> edges_;
};

// Returns the circle of the steps of the path from `begin` on.
LinkGraph::Circle LinkGraph::circleOf(const std::vector<Step>& path, std::size_t begin) const {
  const auto inputOf = [&](std::size_t at) {
    return edges_[path[at].node][path[at].next - 1].input;
  };
  Circle circle{{}, inputOf(path.size() - 1), path.size() - begin};
  for (std::size_t i = 0; i < std::min(circle.size, MAX_FIRST); ++i) {
    circle.first.push_back(inputOf(begin + i));
  }
  return circle;
}

// Searches depth-first. An edge to a node on the current path closes a circle.
template <class Found>
void LinkGraph::findCircles(const Found& found) {
  std::vector<State> states(edges_.size(), State::New);
  std::vector<std::size_t> places(edges_.size());  // the indices of the open nodes in `path`
  std::vector<Step> path;
  for (std::size_t start = 0; start < edges_.size(); ++start) {
    if (states[start] != State::New) continue;
    path.push_back({start, 0});
    states[start] = State::Open;
    while (!path.empty()) {
      Step& step = path.back();
      if (step.next == edges_[step.node].size()) {
        states[step.node] = State::Done;
        path.pop_back();
        continue;
      }
      const std::size_t to = edges_[step.node][step.next++].to;
      if (states[to] == State::New) {
        states[to] = State::Open;
        places[to] = path.size();
        path.push_back({to, 0});
      } else if (states[to] == State::Open) {
        found(circleOf(path, places[to]));
      }
    }
  }
}

std::string namesOf(const LinkGraph::Circle& circle) {
  std::string names;
  for (const InputView& input : circle.first) names += input.path() + ", ";
  if (circle.size > circle.first.size()) return names + "...";
  return names.substr(0, names.size() - 2);
}

// Adds a finding for each circle that the search finds. A link from a node to itself is a circle of
// one node. Another rule reports a connection of a node to itself.
void addCircles(LinkGraph& graph, RuleId rule, const char* what, SceneFindings& found) {
  graph.findCircles([&](const LinkGraph::Circle& circle) {
    const InputView closing = circle.closing;
    const bool isSelf = circle.size == 1;
    if (isSelf && rule == RuleId::ConnectionCircle) return;  // SelfConnection reports it
    found.add({rule, closing.path(),
               isSelf ? closing.path() + " refers to its own node"
                      : std::string("these ") + what + " form a circle: " + namesOf(circle),
               "remove one of them"});
  });
}

// The rules about links. A circle of references is reported only if all its inputs have the same
// name. Elements of arrays have no names and are left out. Other circles may be intended: a parent
// may refer to its children by one input, and each child to its parent by another.
class LinkRules final : public InputRule {
 public:
  explicit LinkRules(SceneFindings& found) : found_(found) {}

  void visit(const NodeView& node, const InputView& input, vsa::ValueType) override {
    const NodeView target = input.node();
    if (target && !input.name().empty()) references_[input.name()].add(node, target, input);
    const vsa::ConnectionView connection = input.connection();
    if (!connection) return;
    connections_.add(node, connection.node(), input);
    if (connection.node() != node) return;
    found_.add({RuleId::SelfConnection, input.path(),
                input.path() + " is connected to an output of its own node", "name another node"});
  }

  void finish() override {
    for (auto& [name, graph] : references_) {
      addCircles(graph, RuleId::ReferenceCircle, "references", found_);
    }
    addCircles(connections_, RuleId::ConnectionCircle, "connections", found_);
  }

 private:
  SceneFindings& found_;
  std::map<std::string_view, LinkGraph> references_;
  LinkGraph connections_;
};

}  // namespace

InputRulePointer linkRules(SceneFindings& found) {
  const bool isEnabled = found.isEnabled(RuleId::SelfConnection) ||
                         found.isEnabled(RuleId::ConnectionCircle) ||
                         found.isEnabled(RuleId::ReferenceCircle);
  return isEnabled ? std::make_unique<LinkRules>(found) : nullptr;
}

}  // namespace vsa_tools
