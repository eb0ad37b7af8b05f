#include "tools/vsa/check/selection/level_table.h"

#include <stdexcept>

#include "tools/vsa/common/did_you_mean.h"

namespace vsa_tools {

namespace {

// What a name in LevelRules may be, from the least to the most specific.
constexpr int ALL = 1, GROUP = 2, ID = 3, KINDS_OF_NAMES = 4;

int precedenceOf(const std::string& name, const FindingKind& kind) {
  if (name == kind.id) return ID;
  if (name == kind.group) return GROUP;
  return name == "all" ? ALL : 0;
}

[[noreturn]] void throwUnknown(const std::string& name) {
  std::vector<std::string> known{"all"};
  for (const FindingKind& kind : allKinds()) {
    known.emplace_back(kind.id);
    known.emplace_back(kind.group);
  }
  throw std::runtime_error("there is no rule or group " + name + didYouMean(name, known));
}

}  // namespace

LevelTable::LevelTable() {
  for (const FindingKind& kind : allKinds()) {
    if (!kind.isDefault) choices_[kind.id] = {std::nullopt, 0};
  }
  rules_ = enabledRules();
}

void LevelTable::apply(const LevelRules& rules) {
  ++round_;
  choose(rules.ignored, std::nullopt);
  choose(rules.warnings, Level::Warning);
  choose(rules.errors, Level::Error);
  rules_ = enabledRules();
}

RuleSet LevelTable::enabledRules() const {
  return RuleSet([this](const Rule& rule) { return levelOf(rule.id, rule.level).has_value(); });
}

void LevelTable::choose(const std::vector<std::string>& names, std::optional<Level> level) {
  for (const std::string& name : names) {
    bool isKnown = false;
    for (const FindingKind& kind : allKinds()) {
      const int specific = precedenceOf(name, kind);
      if (specific == 0) continue;
      isKnown = true;
      const int precedence = round_ * KINDS_OF_NAMES + specific;
      Choice& choice = choices_[kind.id];
      if (precedence >= choice.precedence) choice = {level, precedence};
    }
    if (!isKnown) throwUnknown(name);
  }
}

std::optional<Level> LevelTable::levelOf(std::string_view id, Level level) const {
  const auto found = choices_.find(id);
  return found == choices_.end() ? level : found->second.level;
}

}  // namespace vsa_tools
