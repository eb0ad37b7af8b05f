#include <charconv>
#include <optional>
#include <unordered_map>
#include <utility>

#include "tools/vsa/check/rules/scene/scene_rules.h"
#include "tools/vsa/check/rules/text/text_walk.h"

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;
using Places = std::unordered_map<std::string, std::optional<vsa::TextRange>>;

/// Finds where a text assigns to inputs and declares nodes.
class PlaceFinder {
 public:
  explicit PlaceFinder(Places& places) : places_(places) {}

  void visit(const StatementView& view) {
    if (view.kind() == vsa::StatementKind::Comment) return;
    if (!view.hasPath()) {
      visitNode(view);
      return;
    }
    const std::string path = pathOf(view);
    const auto found = places_.find(path);
    if (found == places_.end()) return;
    const std::size_t last = view.statement.tokens.size() - 2;
    found->second = {view.value().range.begin, view.token(last).range.end};
  }

 private:
  void visitNode(const StatementView& view) {
    const auto found = places_.find(std::string(view.node));
    if (found != places_.end() && !found->second) found->second = view.token(1).range;
  }

  // With the index that "[*]" stands for.
  std::string pathOf(const StatementView& view) {
    std::string path(view.node);
    for (std::size_t i = view.firstInput; i < view.pathEnd; ++i) {
      const vsa::SyntaxToken& token = view.token(i);
      if (token.kind == SyntaxKind::Brackets) {
        path += '[' + std::to_string(index(path, token.text)) + ']';
      } else if (!token.is('.')) {
        path += '.';
        path += token.text;
      }
    }
    return path;
  }

  std::uint64_t index(const std::string& path, std::string_view brackets) {
    std::uint64_t& size = sizes_[path];
    const std::size_t digits = brackets.find_first_of("0123456789");
    if (digits == std::string_view::npos) return size++;
    std::uint64_t index = 0;
    std::from_chars(brackets.data() + digits, brackets.data() + brackets.size(), index);
    if (index >= size) size = index + 1;
    return index;
  }

  Places& places_;
  std::unordered_map<std::string, std::uint64_t> sizes_;  // of arrays
};

}  // namespace

void SceneFindings::add(SceneFinding finding) {
  if (isEnabled(finding.rule)) waiting_.push_back(std::move(finding));
}

void SceneFindings::finish() {
  if (waiting_.empty()) return;
  Places places;
  for (const SceneFinding& finding : waiting_) places[finding.path];
  if (input_.isTextKept) {
    PlaceFinder finder(places);
    TextWalk walk(input_.text);
    while (const std::optional<StatementView> view = walk.next()) finder.visit(*view);
  }
  for (SceneFinding& finding : waiting_) {
    found_.add(finding.rule, places[finding.path], std::move(finding.message)).hint =
        std::move(finding.hint);
  }
}

}  // namespace vsa_tools
