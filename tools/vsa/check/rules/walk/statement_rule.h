// StatementRule: a family of rules that visits the statements of a text one by one.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <vsa/outline.h>
#include "tools/vsa/check/rules/rule_findings.h"
#include "tools/vsa/check/text/path_key.h"

namespace vsa_tools {

/// The properties of a statement, each of which is one bit.
enum StatementTrait : unsigned {
  COMMENT = 1,
  NODE = 2,        ///< The statement is a declaration or directive.
  PATH = 4,        ///< The statement is an assignment or connection.
  WITH_PATH = 8,   ///< The path begins with a period.
  LONG_PATH = 16,  ///< The path has members or indices.
  STRING = 32,     ///< The value is a string.
  REFERENCE = 64,  ///< The value is a word without a list.
  INTEGER = 128,   ///< The value is an integer.
  TUPLE = 256,     ///< The value is a tuple.
  BUFFER = 512,    ///< The value is a buffer.
  OBJECT = 1024,   ///< The value is an object.
};

/// A statement with correct grammar, and the node that it concerns.
struct StatementView {
  vsa::StatementOutline statement;
  /// The with node: the node of paths that begin with a period. Empty before the first block.
  std::string_view withNode;
  /// The key of `node()`.
  PathKey nodeKey = 0;
  /// The index of the statement in the text.
  std::size_t index = 0;
  /// The previous statement that is not a comment, if it is a declaration that ends in a semicolon.
  std::string_view declarationBefore;

  vsa::StatementKind kind() const { return statement.kind; }
  bool isLink() const { return kind() == vsa::StatementKind::Connection; }
  bool isAssignment() const { return kind() == vsa::StatementKind::Assignment; }
  bool hasPath() const { return statement.hasPath(); }
  /// Whether the path begins with a period.
  bool isOfWithNode() const { return hasPath() && statement.node.empty(); }
  /// Returns the node of a declaration, directive or path. Empty for a comment, and for a path that
  /// begins with a period although there is no with node.
  std::string_view node() const { return isOfWithNode() ? withNode : statement.node; }
  /// Returns the node and the path for a message. Long ones are shortened.
  std::string shownPath() const;
  /// Returns the path as it is written. It begins with the node or with a period.
  std::string_view wholePath() const;
};

class StatementRule {
 public:
  /// Only statements with at least one of the `traits` are visited, because most statements concern
  /// few families.
  explicit StatementRule(unsigned traits) : traits_(traits) {}
  virtual ~StatementRule() = default;
  bool concerns(unsigned traits) const { return (traits_ & traits) != 0; }
  virtual void visit(const StatementView& view) = 0;
  /// Called once, after the last visit.
  virtual void finish() {}

 private:
  unsigned traits_;
};

using StatementRulePointer = std::unique_ptr<StatementRule>;

// Return a family, or null if none of its rules runs.
StatementRulePointer listRules(const TextRuleInput& input, RuleFindings& found);
StatementRulePointer bufferRules(const TextRuleInput& input, RuleFindings& found);
StatementRulePointer digitRules(const TextRuleInput& input, RuleFindings& found);
StatementRulePointer stringRules(const TextRuleInput& input, RuleFindings& found);
StatementRulePointer commentRules(const TextRuleInput& input, RuleFindings& found);
StatementRulePointer nodeRules(const TextRuleInput& input, RuleFindings& found);
StatementRulePointer assignmentRules(const TextRuleInput& input, RuleFindings& found);
StatementRulePointer arrayRules(const TextRuleInput& input, RuleFindings& found);

}  // namespace vsa_tools
