#include <optional>
#include <unordered_map>
#include <utility>

#include "tools/vsa/check/rules/scene/scene_rules.h"
#include "tools/vsa/check/rules/text/resolved_paths.h"
#include "tools/vsa/check/rules/text/text_walk.h"

namespace vsa_tools {

namespace {

using Place = SceneFinding::Place;

/// The places of one input or node.
struct Places {
  std::optional<vsa::TextRange>& operator[](Place place) {
    return ranges[static_cast<std::size_t>(place)];
  }
  std::optional<vsa::TextRange> ranges[4];
};

using PlaceTable = std::unordered_map<PathKey, Places>;

/// Finds where a text assigns to the inputs and declares the nodes of a table.
class PlaceFinder {
 public:
  explicit PlaceFinder(PlaceTable& table) : table_(table) {}

  void visit(const StatementView& view) {
    if (view.kind() == vsa::StatementKind::Comment) return;
    if (view.hasPath()) {
      visitInput(view);
    } else {
      visitNode(view);
    }
  }

 private:
  void visitInput(const StatementView& view) {
    const auto found = table_.find(paths_.keyOf(view));
    if (found == table_.end()) return;
    const std::size_t last = view.statement.tokens.size() - 2;
    found->second[Place::Value] = {view.value().range.begin, view.token(last).range.end};
    std::optional<vsa::TextRange>& path = found->second[Place::Path];
    const vsa::TextPosition begin = view.token(view.firstInput).range.begin;
    if (!path) path = {begin, view.token(view.pathEnd - 1).range.end};
  }

  void visitNode(const StatementView& view) {
    const auto found = table_.find(view.nodeKey);
    if (found == table_.end() || found->second[Place::Node]) return;
    found->second[Place::Type] = view.token(0).range;
    found->second[Place::Node] = view.token(1).range;
  }

  PlaceTable& table_;
  ResolvedPaths paths_;
};

}  // namespace

void SceneFindings::add(const SceneFinding& finding) {
  if (!isEnabled(finding.rule)) return;
  waiting_.push_back({finding.rule, keyOfPath(finding.path), finding.place,
                      withoutLongQuotes(finding.message), withoutLongQuotes(finding.hint)});
}

void SceneFindings::finish() {
  if (waiting_.empty()) return;
  PlaceTable table;
  for (const Waiting& finding : waiting_) table[finding.input];
  if (input_.isTextKept) {
    PlaceFinder finder(table);
    TextWalk walk(input_.text);
    while (const std::optional<StatementView> view = walk.next()) finder.visit(*view);
  }
  for (Waiting& finding : waiting_) {
    found_.add(finding.rule, table[finding.input][finding.place], std::move(finding.message)).hint =
        std::move(finding.hint);
  }
}

}  // namespace vsa_tools
