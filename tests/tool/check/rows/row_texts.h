// The texts in the tables of other tests of vsa check.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <vsa/types.h>

namespace vsa_tests {

/// The texts of the tests of hints. The reader reports a mistake in each.
std::vector<std::string_view> hintTexts();

/// A text with a finding of a rule.
struct RuleText {
  std::string id;
  std::string text;
};

/// The texts of the tests of rules about described node types.
std::vector<RuleText> typeRuleTexts();
/// The node types for these texts.
std::vector<vsa::TypeDescription> ruleTypes();

}  // namespace vsa_tests
