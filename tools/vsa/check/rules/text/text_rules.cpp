#include "tools/vsa/check/rules/text/text_rules.h"

#include <array>
#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

#include "tools/vsa/check/rules/walk/text_walk.h"

namespace vsa_tools {

namespace {

StatementTrait traitOfValue(const vsa::StatementOutline& statement) {
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
      return PATH;
  }
}

/// The families whose rules run. It finds those that a statement concerns in a table instead of
/// asking each family, because most statements concern only one to three families.
class Families {
 public:
  void add(StatementRulePointer family) {
    if (family == nullptr) return;
    const Set bit = Set{1} << families_.size();
    for (std::size_t trait = 0; trait < byTrait_.size(); ++trait) {
      if (family->concerns(1U << trait)) byTrait_[trait] |= bit;
    }
    families_.push_back(std::move(family));
  }
  bool isEmpty() const { return families_.empty(); }

  void visit(const StatementView& view) const {
    for (Set left = concernedBy(view); left != 0; left &= left - 1) {
      families_[static_cast<std::size_t>(std::countr_zero(left))]->visit(view);
    }
  }
  void finish() const {
    for (const StatementRulePointer& family : families_) family->finish();
  }

 private:
  /// A set of families, one bit for each.
  using Set = std::uint32_t;

  Set of(StatementTrait trait) const {
    return byTrait_[static_cast<std::size_t>(std::countr_zero(unsigned{trait}))];
  }
  Set concernedBy(const StatementView& view) const {
    if (view.kind() == vsa::StatementKind::Comment) return of(COMMENT);
    if (!view.hasPath()) return of(NODE);
    Set families = of(PATH);
    if (view.isOfWithNode()) families |= of(WITH_PATH);
    if (!view.statement.isPlainPath) families |= of(LONG_PATH);
    return view.isAssignment() ? families | of(traitOfValue(view.statement)) : families;
  }

  std::vector<StatementRulePointer> families_;
  std::array<Set, std::bit_width(unsigned{OBJECT})> byTrait_{};  // the families of each trait
};

}  // namespace

void findTextProblems(const TextRuleInput& input, RuleFindings& found) {
  Families families;
  for (const auto family : {listRules, bufferRules, digitRules, stringRules, commentRules,
                            nodeRules, assignmentRules, arrayRules}) {
    families.add(family(input, found));
  }
  if (families.isEmpty()) return;
  TextWalk walk(input.statements);
  for (StatementView view; !input.stop.stop_requested() && walk.next(view);) {
    families.visit(view);
  }
  families.finish();
}

}  // namespace vsa_tools
