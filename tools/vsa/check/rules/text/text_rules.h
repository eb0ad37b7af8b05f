// Rules about the statements of a text.
#pragma once

#include "tools/vsa/check/rules/rule_findings.h"

namespace vsa_tools {

/// Runs all families of rules about statements. The text is read once for all of them.
void findTextProblems(const TextRuleInput& input, RuleFindings& found);

}  // namespace vsa_tools
