#include <optional>
#include <unordered_map>
#include <utility>

#include "tools/vsa/check/rules/scene/scene_rules.h"
#include "tools/vsa/check/rules/walk/resolved_paths.h"
#include "tools/vsa/check/rules/walk/text_walk.h"

namespace vsa_tools {

namespace {

using Place = SceneFinding::Place;

/// The places of one input or node in the text.
struct Places {
  std::string_view& operator[](Place place) { return parts[static_cast<std::size_t>(place)]; }
  std::string_view parts[4];  // the part of the text for each Place; empty if there is none
  bool isOfMember = false;    // whether the statement is about a member or an element
};

using PlaceTable = std::unordered_map<PathKey, Places>;

/// Finds the assignments to the inputs of a table, and the declarations of its nodes.
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
    Places* parent = nullptr;
    const auto found = table_.find(
        paths_.keyOf(view, [&](PathKey key) { parent = visitParent(key, view.statement.path); }));
    const bool isElement = view.statement.path.ends_with(']');
    if (isElement && parent != nullptr) (*parent)[Place::Value] = view.statement.value;
    // A value for a whole object or array changes nothing: the reader refuses it, except `{}` for
    // an object, which has no effect. A connection does not change the value, either.
    if (found == table_.end() || found->second.isOfMember) return;
    found->second[Place::Value] = view.statement.value;
    std::string_view& path = found->second[Place::Path];
    if (path.empty()) path = view.statement.path;
  }

  // Records the first statement that names a member or an element of an object or array, unless a
  // statement about the whole object was recorded before. Returns the places of the object or array
  // if it records the statement.
  Places* visitParent(PathKey key, std::string_view path) {
    const auto found = table_.find(key);
    if (found == table_.end() || !found->second[Place::Path].empty()) return nullptr;
    found->second[Place::Path] = path.substr(0, path.find_first_of(".["));
    found->second[Place::Value] = path;
    found->second.isOfMember = true;
    return &found->second;
  }

  void visitNode(const StatementView& view) {
    const auto found = table_.find(view.nodeKey);
    if (found == table_.end() || !found->second[Place::Node].empty()) return;
    found->second[Place::Type] = view.statement.type;
    found->second[Place::Node] = view.node();
  }

  PlaceTable& table_;
  ResolvedPaths paths_;
};

}  // namespace

void SceneFindings::add(const SceneFinding& finding) {
  if (!isEnabled(finding.rule)) return;
  waiting_.push_back({finding.rule, keyOfPath(finding.path), finding.place,
                      withoutLongQuotes(finding.message), withoutLongQuotes(finding.hint),
                      finding.replacement});
}

void SceneFindings::finish() {
  if (waiting_.empty()) return;
  PlaceTable table;
  for (const Waiting& finding : waiting_) table[finding.input];
  if (input_.isTextKept) {
    PlaceFinder finder(table);
    TextWalk walk(input_.statements);
    for (StatementView view; walk.next(view);) finder.visit(view);
  }
  for (Waiting& finding : waiting_) {
    const std::string_view part = table[finding.input][finding.place];
    const std::optional<vsa::TextRange> range =
        part.empty() ? std::nullopt : std::optional(found_.rangeOf(part));
    Finding& added = found_.add(finding.rule, range, std::move(finding.message));
    added.hint = std::move(finding.hint);
    if (!range || finding.replacement.empty()) continue;
    added.edits = {{range->begin.offset, range->end.offset, std::move(finding.replacement)}};
  }
}

}  // namespace vsa_tools
