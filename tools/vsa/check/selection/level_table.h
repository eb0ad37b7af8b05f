// LevelTable: the level of each kind of finding, and which kinds are ignored.
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

/// Ids and groups of kinds, as in --error, --warn, --ignore and the configuration. The name "all"
/// means all kinds.
struct LevelRules {
  std::vector<std::string> errors;
  std::vector<std::string> warnings;
  std::vector<std::string> ignored;
};

class LevelTable {
 public:
  /// Each kind has its own level, and those that are not reported by default are ignored.
  LevelTable();

  /// Applies the rules to the table. An id has precedence over a group, a group over "all", and for
  /// the same name an error over a warning, a warning over ignoring. Throws std::runtime_error if a
  /// name is neither an id nor a group. The message suggests a similar name.
  void apply(const LevelRules& rules);

  /// The level of the kind; nothing if it is ignored.
  std::optional<Level> levelOf(std::string_view id, Level level) const;
  /// The rules that are not ignored.
  const RuleSet& rules() const { return rules_; }

 private:
  struct Choice {
    std::optional<Level> level;
    int precedence = 0;
  };
  void choose(const std::vector<std::string>& names, std::optional<Level> level);
  RuleSet enabledRules() const;

  // The number of calls of apply(). A later call has precedence over earlier ones.
  int round_ = 0;
  std::map<std::string, Choice, std::less<>> choices_;
  RuleSet rules_;
};

}  // namespace vsa_tools
