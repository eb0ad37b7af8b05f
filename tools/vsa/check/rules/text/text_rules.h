// Rules about the statements of a text.
#pragma once

#include "tools/vsa/check/rules/rule_findings.h"

namespace vsa_tools {

/// Reads the text once for all families.
void findTextProblems(const RuleInput& input, RuleFindings& found);

}  // namespace vsa_tools
