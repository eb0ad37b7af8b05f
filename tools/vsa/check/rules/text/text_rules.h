// Rules about the statements of a text.
#pragma once

#include "tools/vsa/check/rules/rule_findings.h"

namespace vsa_tools {

/// Runs all families of rules about statements in one pass over the text. A family may need a
/// second pass at the end.
void findTextProblems(const TextRuleInput& input, RuleFindings& found);

}  // namespace vsa_tools
