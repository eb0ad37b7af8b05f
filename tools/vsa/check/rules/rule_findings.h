// RuleFindings: delivers the findings of the rules that run.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/rules/rule.h"
#include "tools/vsa/check/rules/rule_table.h"
#include "tools/vsa/check/text/text_places.h"

namespace vsa_tools {

class RuleFindings {
 public:
  /// `text` is the text that the findings are about. `statements` is the text that the rules
  /// inspect: `text`, or a text of the same size with repaired statements.
  RuleFindings(const RuleSet& rules, std::string_view text, std::string_view statements,
               const FindingConsumer& consumer)
      : rules_(rules), places_(text), statements_(statements), consumer_(consumer) {}

  bool isEnabled(RuleId rule) const { return rules_.has(static_cast<std::size_t>(rule)); }
  bool isAnyEnabled(std::initializer_list<RuleId> rules) const;

  /// Returns the range of `part`, which must be a view of a part of the text that is inspected.
  vsa::TextRange rangeOf(std::string_view part) {
    const auto begin = static_cast<std::uint64_t>(part.data() - statements_.data());
    return places_.rangeOf(begin, begin + part.size());
  }

  /// Begins a finding of a rule that runs, and returns it. The caller completes the finding. It is
  /// delivered when the next finding is added.
  Finding& add(RuleId rule, std::optional<vsa::TextRange> range, std::string message);
  /// Delivers the last finding, if there is one.
  void finish();

 private:
  const RuleSet& rules_;
  TextPlaces places_;
  std::string_view statements_;
  const FindingConsumer& consumer_;
  std::optional<Finding> last_;
};

}  // namespace vsa_tools
