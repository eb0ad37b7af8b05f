#include "tools/vsa/check/rules/text/text_rules.h"

#include <vector>

#include "tools/vsa/check/rules/walk/text_walk.h"

namespace vsa_tools {

namespace {

unsigned traitsOfValue(const vsa::StatementOutline& statement) {
  switch (statement.valueKind) {
    case vsa::SyntaxKind::String:
      return STRING;
    case vsa::SyntaxKind::Integer:
      return INTEGER;
    case vsa::SyntaxKind::Braces:
      return OBJECT;
    case vsa::SyntaxKind::Word:
      if (statement.list.empty()) return REFERENCE;
      return statement.brackets.empty() ? TUPLE : BUFFER;
    default:
      return 0;
  }
}

unsigned traitsOf(const StatementView& view) {
  if (view.kind() == vsa::StatementKind::Comment) return COMMENT;
  if (!view.hasPath()) return NODE;
  unsigned traits = PATH;
  if (view.isOfWithNode()) traits |= WITH_PATH;
  if (!view.statement.isPlainPath) traits |= LONG_PATH;
  return view.isAssignment() ? traits | traitsOfValue(view.statement) : traits;
}

}  // namespace

void findTextProblems(const TextRuleInput& input, RuleFindings& found) {
  std::vector<StatementRulePointer> families;
  for (const auto family : {listRules, bufferRules, digitRules, stringRules, commentRules,
                            nodeRules, assignmentRules, arrayRules}) {
    if (StatementRulePointer rules = family(input, found)) families.push_back(std::move(rules));
  }
  if (families.empty()) return;
  TextWalk walk(input.text);
  for (StatementView view; !input.stop.stop_requested() && walk.next(view);) {
    const unsigned traits = traitsOf(view);
    for (const StatementRulePointer& rules : families) {
      if (rules->concerns(traits)) rules->visit(view);
    }
  }
  for (const StatementRulePointer& rules : families) rules->finish();
}

}  // namespace vsa_tools
