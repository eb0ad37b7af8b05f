// Rules about declarations and the node that paths with a leading period belong to.
#include <optional>
#include <string>
#include <unordered_map>

#include "tools/vsa/check/rules/text/statement_rule.h"
#include "tools/vsa/check/rules/text/text_walk.h"
#include "tools/vsa/check/text/statement_scan.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

namespace {

using vsa::StatementKind;

struct Declared {
  std::string_view type;
  vsa::TextRange range;
};

class NodeRules final : public StatementRule {
 public:
  NodeRules(const RuleInput& input, RuleFindings& found) : text_(input.text), found_(found) {}

  void visit(const StatementView& view) override {
    if (view.kind() == StatementKind::Comment) return;
    if (view.hasPath()) {
      checkPeriod(view);
      checkRemoved(view);
    } else {
      visitNode(view);
    }
    isBehindSemicolon_ = view.kind() == StatementKind::Declaration;
    lastBlock_.reset();
    if (isBehindSemicolon_) semicolon_ = view.token(2).range;
    if (view.kind() == StatementKind::Block) lastBlock_ = view.statement.range;
  }

  void finish() override {
    if (!lastBlock_ || !found_.isEnabled(RuleId::EmptyLastBlock)) return;
    if (hasStatementAt(lastBlock_->end.offset)) return;  // a malformed one, which is not visited
    found_.add(RuleId::EmptyLastBlock, *lastBlock_, "the text ends behind this colon").hint =
        "the file may have been cut off; a node without inputs ends in `;`";
  }

 private:
  bool hasStatementAt(std::size_t offset) const {
    Statement next = nextStatement(text_, offset);
    while (next.isComment) next = nextStatement(text_, next.end);
    return next.begin < text_.size();
  }

  void visitNode(const StatementView& view) {
    const bool isRemoval = view.kind() == StatementKind::Remove;
    if (isRemoval) declared_.erase(view.node);
    if (isRemoval && view.node == withNode_) removed_ = view.statement.range;
    if (view.kind() == StatementKind::Block) {
      withNode_ = view.node;
      removed_.reset();
    }
    const bool isWith = view.kind() == StatementKind::Block && isWord(view.token(0), "with");
    const bool declares =
        view.kind() == StatementKind::Block || view.kind() == StatementKind::Declaration;
    if (declares && !isWith) checkType(view);
  }

  void checkType(const StatementView& view) {
    const vsa::SyntaxToken& type = view.token(0);
    const auto [known, isNew] =
        declared_.try_emplace(view.node, Declared{type.text, view.statement.range});
    if (isNew || known->second.type == type.text) return;
    if (!found_.isEnabled(RuleId::RedeclaredType)) return;
    Finding& finding = found_.add(RuleId::RedeclaredType, type.range,
                                  "this finds the node " + shortened(view.node) + ", which is a " +
                                      shortened(known->second.type) + " and stays one");
    finding.hint = "give the second node a name of its own";
    finding.notes.push_back({known->second.range, "declared here"});
  }

  // ".input" directly behind a declaration with a semicolon belongs to another node.
  void checkPeriod(const StatementView& view) {
    if (!isBehindSemicolon_ || !view.isOfWithNode() || view.node.empty()) return;
    if (!found_.isEnabled(RuleId::PeriodBehindSemicolon)) return;
    Finding& finding = found_.add(RuleId::PeriodBehindSemicolon, semicolon_,
                                  "the inputs behind this semicolon belong to the node " +
                                      shortened(view.node) + ", which was set before");
    finding.hint = "end the declaration with a colon";
    finding.edits = {{semicolon_.begin.offset, semicolon_.end.offset, ":"}};
    finding.notes.push_back({view.pathRange(), "this is an input of " + shortened(view.node)});
  }

  void checkRemoved(const StatementView& view) {
    if (!removed_ || !view.isOfWithNode() || !found_.isEnabled(RuleId::RemovedNode)) return;
    Finding& finding = found_.add(RuleId::RemovedNode, view.pathRange(),
                                  "this belongs to the node " + shortened(view.node) +
                                      ", which is removed; the value is lost");
    finding.hint = "set another node first, such as `with name:`";
    finding.notes.push_back({*removed_, "removed here"});
  }

  std::string_view text_;
  RuleFindings& found_;
  std::unordered_map<std::string_view, Declared> declared_;
  std::string_view withNode_;
  std::optional<vsa::TextRange> removed_;  // the statement that removed the with node
  std::optional<vsa::TextRange> lastBlock_;
  vsa::TextRange semicolon_;
  bool isBehindSemicolon_ = false;
};

}  // namespace

StatementRulePointer nodeRules(const RuleInput& input, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::EmptyLastBlock, RuleId::RedeclaredType,
                           RuleId::PeriodBehindSemicolon, RuleId::RemovedNode})) {
    return nullptr;
  }
  return std::make_unique<NodeRules>(input, found);
}

}  // namespace vsa_tools
