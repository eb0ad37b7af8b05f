// RuleFindings: delivers the findings of the rules that run.
#pragma once

#include <optional>
#include <string>

#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/rules/rule.h"
#include "tools/vsa/check/rules/rule_table.h"

namespace vsa_tools {

class RuleFindings {
 public:
  RuleFindings(const RuleSet& rules, const FindingConsumer& consumer)
      : rules_(rules), consumer_(consumer) {}

  bool isEnabled(RuleId rule) const { return rules_.has(static_cast<std::size_t>(rule)); }
  bool isAnyEnabled(std::initializer_list<RuleId> rules) const;

  /// Begins a finding of a rule that is enabled, and returns it to be completed. It is delivered
  /// when the next one is added.
  Finding& add(RuleId rule, std::optional<vsa::TextRange> range, std::string message);
  /// Delivers the last finding.
  void finish();

 private:
  const RuleSet& rules_;
  const FindingConsumer& consumer_;
  std::optional<Finding> last_;
};

}  // namespace vsa_tools
