// Rules about inputs that several statements assign to.
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "tools/vsa/check/rules/text/statement_rule.h"

namespace vsa_tools {

namespace {

using vsa::StatementKind;

/// An input as it is written: its node, and how many nodes of that name were removed before.
struct InputKey {
  std::string_view node;
  std::uint64_t removals;
  std::string_view path;

  friend bool operator==(const InputKey&, const InputKey&) = default;
};

struct InputHash {
  std::size_t operator()(const InputKey& key) const noexcept {
    const std::hash<std::string_view> hash;
    return (hash(key.node) * 31 + hash(key.path)) * 31 + static_cast<std::size_t>(key.removals);
  }
};

class AssignmentRules final : public StatementRule {
 public:
  explicit AssignmentRules(RuleFindings& found) : found_(found) {}

  void visit(const StatementView& view) override {
    if (view.kind() == StatementKind::Remove) ++removals_[view.node];
    if (!view.hasPath() || view.node.empty() || isNull(view)) return;
    const std::string_view path = view.inputPath();
    if (path.find('*') != std::string_view::npos) return;  // another element each time
    const auto removed = removals_.find(view.node);
    const InputKey key{view.node, removed == removals_.end() ? 0 : removed->second, path};
    Uses& uses = inputs_[key];
    const bool isSet = uses.value.has_value();
    const bool isConnected = uses.connection.has_value();
    const bool isTwice = view.isLink() ? isConnected : isSet;
    if (isTwice) {
      addTwice(view, *(view.isLink() ? uses.connection : uses.value));
    } else if (isSet != isConnected) {
      addBoth(view, view.isLink() ? *uses.value : *uses.connection);
    }
    (view.isLink() ? uses.connection : uses.value) = view.statement.range;
  }

 private:
  // "= null" declares an input for a link that follows, and gives it no value.
  static bool isNull(const StatementView& view) {
    return view.valueTokens() == 1 && view.value().kind == vsa::SyntaxKind::Null;
  }

  struct Uses {
    std::optional<vsa::TextRange> value;
    std::optional<vsa::TextRange> connection;
  };

  void addTwice(const StatementView& view, const vsa::TextRange& before) {
    if (!found_.isEnabled(RuleId::AssignedTwice)) return;
    Finding& finding = found_.add(RuleId::AssignedTwice, view.pathRange(),
                                  "the input " + nameOf(view) + " gets " +
                                      (view.isLink() ? "a connection" : "a value") +
                                      " twice; the last one counts");
    finding.notes.push_back({before, "the first time"});
    finding.hint = "remove one of the two";
  }

  void addBoth(const StatementView& view, const vsa::TextRange& other) {
    if (!found_.isEnabled(RuleId::SetAndConnected)) return;
    Finding& finding =
        found_.add(RuleId::SetAndConnected, view.pathRange(),
                   "the input " + nameOf(view) + " has both a value and a connection");
    finding.notes.push_back({other, view.isLink() ? "the value" : "the connection"});
  }

  static std::string nameOf(const StatementView& view) {
    return std::string(view.node) + '.' + std::string(view.inputPath());
  }

  RuleFindings& found_;
  std::unordered_map<InputKey, Uses, InputHash> inputs_;
  std::unordered_map<std::string_view, std::uint64_t> removals_;
};

}  // namespace

StatementRulePointer assignmentRules(const RuleInput&, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::AssignedTwice, RuleId::SetAndConnected})) return nullptr;
  return std::make_unique<AssignmentRules>(found);
}

}  // namespace vsa_tools
