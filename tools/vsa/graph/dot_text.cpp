#include "tools/vsa/graph/dot_text.h"

#include <fmt/format.h>

#include <cmath>

#include "tools/vsa/common/output/counted.h"
#include "tools/vsa/common/scene/short_value.h"

namespace vsa_tools {

namespace {

constexpr std::size_t LABEL_CHARACTERS = 32;

/// Returns a text as a part of a quoted string. "&" is escaped, too, because Graphviz replaces
/// entities in strings.
std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '&')
      result += "&amp;";
    else if (c == '"' || c == '\\')
      (result += '\\') += c;
    else
      result += c;
  }
  return result;
}

std::string shortName(const std::string& name) {
  return escaped(shortText(name, LABEL_CHARACTERS));
}

/// Returns the colour of a box, by its type. The first type has the hue 0.58. The hues of
/// consecutive types differ by the golden ratio, so that even many types have different hues.
std::string fillColour(const GraphGroup& group) {
  if (group.type.empty()) return "#eeeeee";
  const double turns = 0.58 + 0.618034 * static_cast<double>(group.typeIndex);
  return fmt::format("{:.3f} {} 0.960", turns - std::floor(turns),
                     group.typeIndex % 2 == 0 ? "0.330" : "0.200");
}

std::string groupLabel(const GraphGroup& group) {
  if (group.nodes == 1) return fmt::format("{}\\n{}", shortName(group.name), shortName(group.type));
  if (group.type.empty()) return fmt::format("{} nodes\\nof other types", group.nodes);
  return fmt::format("{} × {}\\n{}, ...", group.nodes, shortName(group.type),
                     shortName(group.name));
}

std::string edgeLabel(const GraphEdge& edge) {
  std::string label = shortName(edge.path);
  if (edge.hasOtherPaths) label += ", ...";
  if (edge.links > 1) label += fmt::format(" × {}", edge.links);
  return label;
}

std::string graphLabel(const SceneGraph& graph, const std::string& title) {
  std::string label =
      shortName(title) + ": " + counted(graph.nodes, "node") + ", " + counted(graph.links, "link");
  if (graph.groups.size() < graph.nodes) label += ", " + counted(graph.groups.size(), "group");
  if (graph.hiddenLinks > 0) label += "; " + counted(graph.hiddenLinks, "link") + " not drawn";
  return label;
}

/// Returns the width of an arrow, which grows with its links: from 1 for one link to 5 for a
/// million.
double lineWidth(std::uint64_t links) {
  return 1 + std::log10(static_cast<double>(links)) * 4 / 6;
}

}  // namespace

std::string dotText(const SceneGraph& graph, const std::string& title) {
  std::string text = fmt::format(
      "digraph scene {{\n"
      "  graph [rankdir=LR, fontname=\"sans-serif\", fontsize=12, label=\"{}\"];\n"
      "  node [shape=box, style=\"rounded,filled\", fontname=\"sans-serif\", fontsize=11,"
      " color=\"#666666\"];\n"
      "  edge [fontname=\"sans-serif\", fontsize=9, color=\"#777777\", fontcolor=\"#444444\"];\n",
      graphLabel(graph, title));
  for (std::size_t i = 0; i < graph.groups.size(); ++i) {
    const GraphGroup& group = graph.groups[i];
    text += fmt::format("  n{} [label=\"{}\", fillcolor=\"{}\"{}];\n", i, groupLabel(group),
                        fillColour(group), group.nodes > 1 ? ", peripheries=2" : "");
  }
  for (const GraphEdge& edge : graph.edges) {
    text += fmt::format("  n{} -> n{} [label=\"{}\", penwidth={:.1f}{}];\n", edge.from, edge.to,
                        edgeLabel(edge), lineWidth(edge.links),
                        edge.isConnection ? ", style=dashed" : "");
  }
  return text + "}\n";
}

}  // namespace vsa_tools
