// Rules: what vsa check looks for besides the diagnostics of the reader. The reader accepts what a
// rule reports, but it is probably not intended.
//
// A rule is a row of rule_table.h. Rules that inspect the same things are one family, a class or
// function in a file of its own, so that a text is read once for all of them. Configuration,
// comments in the text and the baseline are applied to the findings afterwards.
#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include <vsa/read.h>
#include <vsa/types.h>
#include <vsa/view.h>
#include "tools/vsa/check/finding.h"

namespace vsa_tools {

/// The input of the rules. All members must stay valid until runRules returns.
struct RuleInput {
  /// The file without a byte order mark. Empty if the file is too large to be kept in memory.
  std::string_view text;
  /// Whether `text` is the whole file. If not, rules about the text are left out, and findings
  /// about the scene have no place.
  bool isTextKept = true;
  /// The result of the reading; after a fatal mistake, of the text without the wrong statements.
  vsa::SceneView scene;
  /// How the reading ended, and its diagnostics.
  const vsa::ReadOutcome& outcome;
  /// The node types of --types; none if it is not given.
  std::span<const vsa::TypeDescription> types = {};
};

struct Rule {
  const char* id;     ///< The id in kebab case.
  Level level;        ///< The level of the rule's findings.
  const char* group;  ///< A name that --error, --warn and --ignore take for all rules of the group.
  bool isDefault;     ///< Whether the rule runs by default.
  const char* purpose;  ///< One line for a list of rules. docs/rules.md has a page with the id.
};

/// All rules.
std::span<const Rule> allRules();

/// The rules that run.
class RuleSet {
 public:
  RuleSet() = default;  ///< Assign another set before use.
  explicit RuleSet(const std::function<bool(const Rule&)>& isEnabled);

  /// Whether the rule runs; `rule` is its index in allRules().
  bool has(std::size_t rule) const { return enabled_[rule]; }

 private:
  std::vector<bool> enabled_;
};

/// Called with each finding. An exception that the consumer throws ends the rules.
using FindingConsumer = std::function<void(Finding&&)>;

/// Delivers the findings of the rules that run, in any order, with ids and levels.
void runRules(const RuleInput& input, const RuleSet& rules, const FindingConsumer& consumer);

}  // namespace vsa_tools
