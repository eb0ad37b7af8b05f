// StatementRule: a family of rules about the statements of a text, which sees them one by one.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <vsa/syntax.h>
#include "tools/vsa/check/rules/rule_findings.h"
#include "tools/vsa/check/text/path_key.h"

namespace vsa_tools {

/// A statement that the reader accepts by its form, with what its left-hand side names.
struct StatementView {
  const vsa::SyntaxStatement& statement;
  /// The node of a declaration, directive or path. Empty for a comment, and for a path that begins
  /// with a period while no node is set.
  std::string_view node;
  /// The key of `node`.
  PathKey nodeKey = 0;
  /// Assignments and connections: the token of the path's first input, and the token behind the
  /// path.
  std::size_t firstInput = 0;
  std::size_t pathEnd = 0;

  const vsa::SyntaxToken& token(std::size_t i) const { return statement.tokens[i]; }
  vsa::StatementKind kind() const { return statement.kind; }
  bool isLink() const { return kind() == vsa::StatementKind::Connection; }
  bool isAssignment() const { return kind() == vsa::StatementKind::Assignment; }
  bool hasPath() const { return isLink() || isAssignment(); }
  /// Whether the path begins with a period.
  bool isOfWithNode() const { return firstInput == 1; }
  /// The first token of the value.
  const vsa::SyntaxToken& value() const { return token(statement.valueIndex); }
  /// The tokens of the value.
  std::size_t valueTokens() const { return statement.tokens.size() - 1 - statement.valueIndex; }
  /// Whether the path is an input of a node, without members and indices.
  bool isPlainPath() const { return pathEnd == firstInput + 1; }
  /// The path behind the node, as it is written, such as "keys[0].time".
  std::string_view inputPath() const;
  /// The node and the path for a message, shortened.
  std::string shownPath() const;
  vsa::TextRange pathRange() const { return {token(0).range.begin, token(pathEnd - 1).range.end}; }
};

class StatementRule {
 public:
  virtual ~StatementRule() = default;
  virtual void visit(const StatementView& view) = 0;
  /// After the last statement.
  virtual void finish() {}
};

using StatementRulePointer = std::unique_ptr<StatementRule>;

// One function for each family. Null if none of its rules runs.
StatementRulePointer listRules(const RuleInput& input, RuleFindings& found);
StatementRulePointer bufferRules(const RuleInput& input, RuleFindings& found);
StatementRulePointer digitRules(const RuleInput& input, RuleFindings& found);
StatementRulePointer stringRules(const RuleInput& input, RuleFindings& found);
StatementRulePointer commentRules(const RuleInput& input, RuleFindings& found);
StatementRulePointer nodeRules(const RuleInput& input, RuleFindings& found);
StatementRulePointer assignmentRules(const RuleInput& input, RuleFindings& found);
StatementRulePointer arrayRules(const RuleInput& input, RuleFindings& found);

}  // namespace vsa_tools
