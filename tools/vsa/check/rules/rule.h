// The rules of vsa check. They report what the reader accepts but what is probably not intended.
//
// A rule is a row of rule_table.h. Rules that inspect the same things are a family. A family is a
// class or a function in its own file, so that a text is read once for all of its rules. Rules that
// the configuration ignores do not run. Its levels, comments in the text and the baseline are
// applied to the findings afterwards.
#pragma once

#include <functional>
#include <set>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/read.h>
#include <vsa/types.h>
#include <vsa/view.h>
#include "tools/vsa/check/finding.h"

namespace vsa_tools {

/// The input of the rules about texts. All members must remain valid while the rules run.
struct TextRuleInput {
  /// The text of the file without a byte order mark.
  std::string_view text;
  /// Returns the scene of the text. After a fatal mistake, it is the scene of the text without
  /// wrong statements, or with --first of the text before the mistake. The function may wait until
  /// the text is read.
  std::function<vsa::SceneView()> scene;
  /// The rules end early when a stop is requested.
  std::stop_token stop = {};
  /// The text whose statements are inspected. After a fatal mistake, it is a text of the same size,
  /// in which statements with wrong grammar are repaired, so that the others are found.
  std::string_view statements = text;
};

/// The input of the rules about scenes. All members must remain valid while the rules run.
struct RuleInput {
  /// The text of the file without a byte order mark. Empty if the file is too large to be kept in
  /// memory.
  std::string_view text;
  /// Whether `text` is the whole file. If it is not, rules about the text do not run, and findings
  /// about the scene have no place.
  bool isTextKept = true;
  /// The scene of the text, as in TextRuleInput. Empty if the text was not read.
  vsa::SceneView scene;
  /// The node types of --types. Empty without that option.
  std::span<const vsa::TypeDescription> types = {};
  /// The text whose statements are inspected, as in TextRuleInput.
  std::string_view statements = text;
  /// The names of inputs that may be missing because of a fatal mistake. Null if there is none.
  const std::set<std::string, std::less<>>* lostInputs = nullptr;
};

struct Rule {
  const char* id;  ///< The id in kebab case.
  Level level;     ///< The level of the rule's findings.
  /// A name that --error, --warn and --ignore accept for all rules of the group.
  const char* group;
  bool isDefault;  ///< Whether the rule runs without an option.
  /// One line for a list of rules. The section of the rule in docs/rules.md has its id as the
  /// heading.
  const char* purpose;
};

std::span<const Rule> allRules();

/// The rules that run.
class RuleSet {
 public:
  RuleSet() = default;  ///< An empty set, to which another set must be assigned.
  explicit RuleSet(const std::function<bool(const Rule&)>& isEnabled);

  /// Whether the rule with the index `rule` in allRules() runs.
  bool has(std::size_t rule) const { return enabled_[rule]; }

 private:
  std::vector<bool> enabled_;
};

/// A function that receives each finding. An exception that the function throws ends the rules.
using FindingConsumer = std::function<void(Finding&&)>;

/// Delivers the findings of the rules about texts that run, with ids and levels. The findings are
/// in no particular order, but it is the same order in each run.
void runTextRules(const TextRuleInput& input, const RuleSet& rules,
                  const FindingConsumer& consumer);

/// Delivers the findings of the rules about scenes in the same way.
void runSceneRules(const RuleInput& input, const RuleSet& rules, const FindingConsumer& consumer);

/// Delivers the findings of the rules about texts if the text is kept, and then those of the rules
/// about scenes.
void runRules(const RuleInput& input, const RuleSet& rules, const FindingConsumer& consumer);

}  // namespace vsa_tools
