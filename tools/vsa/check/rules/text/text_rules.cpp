#include "tools/vsa/check/rules/text/text_rules.h"

#include <vector>

#include "tools/vsa/check/rules/text/text_walk.h"

namespace vsa_tools {

void findTextProblems(const RuleInput& input, RuleFindings& found) {
  std::vector<StatementRulePointer> families;
  for (const auto family : {listRules, bufferRules, digitRules, stringRules, commentRules,
                            nodeRules, assignmentRules, arrayRules}) {
    if (StatementRulePointer rules = family(input, found)) families.push_back(std::move(rules));
  }
  if (families.empty()) return;
  TextWalk walk(input.text);
  while (const std::optional<StatementView> view = walk.next()) {
    for (const StatementRulePointer& rules : families) rules->visit(*view);
  }
  for (const StatementRulePointer& rules : families) rules->finish();
}

}  // namespace vsa_tools
