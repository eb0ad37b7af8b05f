#include <algorithm>
#include <iterator>
#include <utility>

#include "tools/vsa/check/rules/byte_rules.h"
#include "tools/vsa/check/rules/rule_findings.h"
#include "tools/vsa/check/rules/scene/scene_rules.h"
#include "tools/vsa/check/rules/text/text_rules.h"
#include "tools/vsa/check/rules/types/type_rules.h"

namespace vsa_tools {

namespace {

constexpr Rule RULES[] = {
#define VSA_ROW(name, id, level, group, isDefault, purpose) \
  {id, Level::level, group, isDefault, purpose},
    VSA_RULE_TABLE(VSA_ROW)
#undef VSA_ROW
};

}  // namespace

std::span<const Rule> allRules() {
  return RULES;
}

RuleSet::RuleSet(const std::function<bool(const Rule&)>& isEnabled) {
  for (const Rule& rule : RULES) enabled_.push_back(isEnabled(rule));
}

void runTextRules(const TextRuleInput& input, const RuleSet& rules,
                  const FindingConsumer& consumer) {
  RuleFindings ofBytes(rules, input.text, input.text, consumer);
  findByteProblems(input, ofBytes);
  ofBytes.finish();
  RuleFindings ofStatements(rules, input.text, input.statements, consumer);
  findTextProblems(input, ofStatements);
  ofStatements.finish();
}

void runSceneRules(const RuleInput& input, const RuleSet& rules, const FindingConsumer& consumer) {
  RuleFindings found(rules, input.text, input.statements, consumer);
  SceneFindings ofScene(input, found);
  findInputProblems(ofScene);
  findNameProblems(ofScene);
  findTypeProblems(ofScene);
  ofScene.finish();
  found.finish();
}

void runRules(const RuleInput& input, const RuleSet& rules, const FindingConsumer& consumer) {
  if (input.isTextKept) {
    runTextRules({input.text, [&] { return input.scene; }, {}, input.statements}, rules, consumer);
  }
  runSceneRules(input, rules, consumer);
}

bool RuleFindings::isAnyEnabled(std::initializer_list<RuleId> rules) const {
  return std::any_of(rules.begin(), rules.end(), [&](RuleId rule) { return isEnabled(rule); });
}

Finding& RuleFindings::add(RuleId rule, std::optional<vsa::TextRange> range, std::string message) {
  finish();
  const Rule& row = RULES[static_cast<std::size_t>(rule)];
  Finding& finding = last_.emplace();
  finding.level = row.level;
  finding.id = row.id;
  finding.message = std::move(message);
  finding.range = range;
  return finding;
}

void RuleFindings::finish() {
  if (!last_) return;
  last_->message = withoutLongQuotes(last_->message);
  last_->hint = withoutLongQuotes(last_->hint);
  consumer_(std::move(*last_));
  last_.reset();
}

}  // namespace vsa_tools
