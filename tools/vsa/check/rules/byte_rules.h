// Rules about the bytes of a text: its encoding, NUL bytes and line ends.
#pragma once

#include "tools/vsa/check/rules/rule_findings.h"

namespace vsa_tools {

void findByteProblems(const TextRuleInput& input, RuleFindings& found);

}  // namespace vsa_tools
