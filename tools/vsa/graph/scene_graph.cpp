#include "tools/vsa/graph/scene_graph.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <span>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "tools/vsa/common/scene/node_links.h"
#include "tools/vsa/graph/node_partition.h"

namespace vsa_tools {

namespace {

constexpr std::size_t EDGES_PER_GROUP = 3;

/// Returns the path with "[]" instead of each index.
std::string pathWithoutIndices(std::string_view path) {
  std::string text;
  bool isIndex = false;
  for (const char c : path) {
    if (c == ']') isIndex = false;
    if (!isIndex) text += c;
    if (c == '[') isIndex = true;
  }
  return text;
}

/// Numbers different texts in the order of their first occurrences.
class Numbering {
 public:
  std::uint32_t numberOf(const std::string& text) {
    const auto [place, isNew] =
        numbers_.try_emplace(text, static_cast<std::uint32_t>(texts.size()));
    if (isNew) texts.push_back(text);
    return place->second;
  }

  std::vector<std::string> texts;

 private:
  std::unordered_map<std::string, std::uint32_t> numbers_;
};

class GraphBuilder {
 public:
  GraphBuilder(vsa::SceneView scene, std::size_t maxGroups) : scene_(scene), maxGroups_(maxGroups) {
    std::vector<std::uint32_t> indices(slotCount(scene));
    for (const vsa::NodeView node : scene.nodes()) {
      indices[slotOf(node)] = static_cast<std::uint32_t>(nodes_.size());
      nodes_.push_back(node);
      typeOf_.push_back(types_.numberOf(std::string(node.type())));
    }
    for (const vsa::NodeView node : nodes_) addLinks(node, indices);
  }

  SceneGraph build() {
    const NodePartition partition = partitionNodes();
    graph_.nodes = nodes_.size();
    graph_.links = links_.size();
    addGroups(partition);
    addEdges(partition);
    hideRarestEdges();
    return std::move(graph_);
  }

 private:
  void addLinks(vsa::NodeView node, const std::vector<std::uint32_t>& indices) {
    forEachLink(node, [&](const InputPlace& place, vsa::NodeView target) {
      links_.push_back({indices[slotOf(node)], indices[slotOf(target)],
                        paths_.numberOf(pathWithoutIndices(place.path)),
                        target != place.input.node()});
    });
  }

  NodePartition partitionNodes() const {
    if (nodes_.size() <= maxGroups_) {
      NodePartition single{std::vector<std::uint32_t>(nodes_.size()), nodes_.size()};
      std::iota(single.groupOf.begin(), single.groupOf.end(), 0U);
      return single;
    }
    const NodePartition byType{typeOf_, types_.texts.size()};
    return joinSmallest(refinePartition(byType, links_, maxGroups_), maxGroups_);
  }

  void addGroups(const NodePartition& partition) {
    graph_.groups.resize(partition.groups);
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      GraphGroup& group = graph_.groups[partition.groupOf[i]];
      const std::string& type = types_.texts[typeOf_[i]];
      if (group.nodes++ == 0) {
        group = {type, std::string(nodes_[i].name()), 1, typeOf_[i]};
      } else if (group.type != type) {
        group.type.clear();
      }
    }
  }

  void addEdges(const NodePartition& partition) {
    std::map<std::tuple<std::uint32_t, std::uint32_t, bool>, GraphEdge> edges;
    for (const IndexedLink& link : links_) {
      const std::uint32_t from = partition.groupOf[link.from], to = partition.groupOf[link.to];
      GraphEdge& edge = edges[{from, to, link.isConnection}];
      const std::string& path = paths_.texts[link.path];
      if (edge.links++ == 0) {
        edge.from = from;
        edge.to = to;
        edge.path = path;
        edge.isConnection = link.isConnection;
      }
      edge.hasOtherPaths = edge.hasOtherPaths || edge.path != path;
    }
    for (auto& [groups, edge] : edges) graph_.edges.push_back(std::move(edge));
  }

  void hideRarestEdges() {
    const std::size_t maxEdges = EDGES_PER_GROUP * maxGroups_;
    std::vector<GraphEdge>& edges = graph_.edges;
    if (edges.size() <= maxEdges) return;
    std::stable_sort(edges.begin(), edges.end(),
                     [](const GraphEdge& a, const GraphEdge& b) { return a.links > b.links; });
    for (const GraphEdge& edge : std::span(edges).subspan(maxEdges)) {
      graph_.hiddenLinks += edge.links;
    }
    edges.resize(maxEdges);
    std::sort(edges.begin(), edges.end(), [](const GraphEdge& a, const GraphEdge& b) {
      return std::tuple(a.from, a.to, a.isConnection) < std::tuple(b.from, b.to, b.isConnection);
    });
  }

  vsa::SceneView scene_;
  std::size_t maxGroups_;
  std::vector<vsa::NodeView> nodes_;
  std::vector<std::uint32_t> typeOf_;  // the number of each node's type
  std::vector<IndexedLink> links_;
  Numbering types_, paths_;
  SceneGraph graph_;
};

}  // namespace

SceneGraph graphOf(vsa::SceneView scene, std::size_t maxGroups) {
  return GraphBuilder(scene, maxGroups).build();
}

}  // namespace vsa_tools
