// LevelTable: the level of each kind of finding. A kind may also be ignored.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/kinds.h"
#include "tools/vsa/check/rules/rule.h"

namespace vsa_tools {

/// The ids and groups of kinds that --error, --warn, --ignore or the configuration contain. The
/// name "all" means all kinds.
struct LevelRules {
  std::vector<std::string> errors;
  std::vector<std::string> warnings;
  std::vector<std::string> ignored;
};

class LevelTable {
 public:
  /// Gives each kind its own level. Kinds that are not reported by default are ignored.
  LevelTable();

  /// Applies the rules to the table. They have precedence over the rules of earlier calls. An id
  /// has precedence over a group, and a group over "all". For the same name, an error has
  /// precedence over a warning, and a warning over ignoring. Throws std::runtime_error if a name is
  /// no id, no group and not "all". The message suggests a similar name if there is one.
  void apply(const LevelRules& rules);

  /// Returns the level of findings with that id, or nothing if they are ignored. `level` is the
  /// result for a kind that is reported by default and that the applied rules do not concern.
  std::optional<Level> levelOf(std::string_view id, Level level) const;
  /// Returns the rules that are not ignored.
  const RuleSet& rules() const { return rules_; }

 private:
  struct Choice {
    std::optional<Level> level;
    int precedence = 0;
  };
  void choose(const std::vector<std::string>& names, std::optional<Level> level);
  RuleSet enabledRules() const;

  // The number of calls of apply(). A later call has precedence over an earlier one.
  int round_ = 0;
  std::map<std::string, Choice, std::less<>> choices_;
  RuleSet rules_;
};

}  // namespace vsa_tools
