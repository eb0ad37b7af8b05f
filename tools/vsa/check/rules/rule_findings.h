// RuleFindings: collects the findings of the rules that run.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/rules/rule.h"
#include "tools/vsa/check/rules/rule_table.h"

namespace vsa_tools {

class RuleFindings {
 public:
  RuleFindings(const RuleSet& rules, std::vector<Finding>& findings)
      : rules_(rules), findings_(findings) {}

  bool isEnabled(RuleId rule) const { return rules_.has(static_cast<std::size_t>(rule)); }
  bool isAnyEnabled(std::initializer_list<RuleId> rules) const;

  /// Appends a finding of a rule that is enabled, and returns it to be completed. It is valid until
  /// the next one is added.
  Finding& add(RuleId rule, std::optional<vsa::TextRange> range, std::string message);

 private:
  const RuleSet& rules_;
  std::vector<Finding>& findings_;
};

}  // namespace vsa_tools
