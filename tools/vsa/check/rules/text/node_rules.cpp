// Rules about declarations, and about the with node of paths that begin with a period.
#include <optional>
#include <string>
#include <utility>

#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/rules/walk/statement_rule.h"
#include "tools/vsa/check/rules/walk/text_walk.h"
#include "tools/vsa/check/text/key_map.h"
#include "tools/vsa/check/text/statement_scan.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

namespace {

using vsa::StatementKind;

struct Declared {
  std::string_view type;
  std::string_view statement;
};

// Returns the keyword that was probably intended instead of the type in a declaration. Must be
// called only for a declaration of a node that already exists.
std::optional<Suggestion> misspeltKeyword(const StatementView& view) {
  NearestName nearest(view.statement.type);
  if (view.kind() == StatementKind::Block) {
    nearest.consider("with");
  } else {
    nearest.consider("remove");
    nearest.consider("define");
  }
  return nearest.found();
}

class NodeRules final : public StatementRule {
 public:
  NodeRules(const TextRuleInput& input, RuleFindings& found)
      : StatementRule(NODE | WITH_PATH),
        text_(input.text),
        statements_(input.statements),
        found_(found) {}

  void visit(const StatementView& view) override {
    if (view.hasPath()) {
      checkPeriod(view);
      checkRemoved(view);
    } else {
      visitNode(view);
    }
    if (view.kind() == StatementKind::Block) lastBlock_ = view.statement.text;
  }

  void finish() override {
    if (lastBlock_.empty() || !found_.isEnabled(RuleId::EmptyLastBlock)) return;
    const char* const end = lastBlock_.data() + lastBlock_.size();
    if (hasStatementAt(static_cast<std::size_t>(end - statements_.data()))) return;
    found_
        .add(RuleId::EmptyLastBlock, found_.rangeOf(lastBlock_), "the text ends behind this colon")
        .hint = "the file may have been cut off; a node without inputs ends in `;`";
  }

 private:
  bool hasStatementAt(std::size_t offset) const {
    Statement next = nextStatement(text_, offset);
    while (next.isComment) next = nextStatement(text_, next.end);
    return next.begin < text_.size();
  }

  void visitNode(const StatementView& view) {
    const bool isRemoval = view.kind() == StatementKind::Remove;
    if (isRemoval) nodes_.remove(view.nodeKey);
    if (isRemoval && view.node() == withNode_) removed_ = view.statement.text;
    if (view.kind() == StatementKind::Block) {
      withNode_ = view.node();
      removed_ = {};
    }
    const bool isWith = view.kind() == StatementKind::Block && isWord(view.statement.type, "with");
    const bool declares =
        view.kind() == StatementKind::Block || view.kind() == StatementKind::Declaration;
    if (declares && !isWith) checkType(view);
  }

  void checkType(const StatementView& view) {
    const std::string_view type = view.statement.type;
    const auto [known, isNew] =
        declared_.insert(nodes_.keyOf(view.nodeKey), {type, view.statement.text});
    if (isNew || known.type == type) return;
    if (!found_.isEnabled(RuleId::RedeclaredType)) return;
    Finding& finding = found_.add(RuleId::RedeclaredType, found_.rangeOf(type),
                                  "this finds the node " + shortened(view.node()) +
                                      ", which is a " + shortened(known.type) + " and stays one");
    finding.notes.push_back({found_.rangeOf(known.statement), "declared here"});
    if (hintForEnd(view, finding)) {
      reported_ = view.statement.text;
      return;
    }
    const std::optional<Suggestion> keyword = misspeltKeyword(view);
    finding.hint = keyword ? "did you mean `" + keyword->name + "`?"
                           : "give the second node a name of its own";
    if (keyword && keyword->isSure) {
      finding.edits = {{finding.range->begin.offset, finding.range->end.offset, keyword->name}};
    }
  }

  // Adds a hint for a `with`, `remove` or `define` whose statement ends with the wrong character,
  // such as "with a;" and "remove a:". The reader takes such a statement for a declaration, and the
  // word for its type.
  bool hintForEnd(const StatementView& view, Finding& finding) {
    const std::string_view type = view.statement.type;
    const bool isWith = isWord(type, "with");
    if (!isWith && !isWord(type, "remove") && !isWord(type, "define")) return false;
    const char* const end = isWith ? ":" : ";";
    const std::uint64_t at = finding.range->begin.offset + view.statement.text.size();
    finding.hint = "a statement with the word `" + std::string(type) + "` ends with `" + end + '`';
    finding.edits = {{at - 1, at, end}};
    return true;
  }

  // Checks a path that begins with a period directly after a declaration with a semicolon. The path
  // then belongs to another node.
  void checkPeriod(const StatementView& view) {
    const std::string_view declaration = view.declarationBefore;
    if (declaration.empty() || view.node().empty() || declaration.data() == reported_.data())
      return;
    if (!found_.isEnabled(RuleId::PeriodBehindSemicolon)) return;
    const vsa::TextRange semicolon = found_.rangeOf(declaration.substr(declaration.size() - 1));
    Finding& finding = found_.add(RuleId::PeriodBehindSemicolon, semicolon,
                                  "the inputs behind this semicolon belong to the node " +
                                      shortened(view.node()) + ", which was set before");
    finding.hint = "end the declaration with a colon";
    finding.edits = {{semicolon.begin.offset, semicolon.end.offset, ":"}};
    finding.notes.push_back(
        {found_.rangeOf(view.wholePath()), "this is an input of " + shortened(view.node())});
  }

  void checkRemoved(const StatementView& view) {
    if (removed_.empty() || !found_.isEnabled(RuleId::RemovedNode)) return;
    const std::string_view removal = std::exchange(removed_, {});
    Finding& finding = found_.add(RuleId::RemovedNode, found_.rangeOf(view.wholePath()),
                                  "this belongs to the node " + shortened(view.node()) +
                                      ", which is removed; the value is lost");
    finding.hint = "set another node first, such as `with name:`";
    finding.notes.push_back({found_.rangeOf(removal), "removed here"});
  }

  std::string_view text_;
  std::string_view statements_;  // the text that is inspected
  RuleFindings& found_;
  NodeGenerations nodes_;
  KeyMap<Declared> declared_{64};
  std::string_view withNode_;
  std::string_view reported_;   // the last `with`, `remove` or `define` that ends wrongly
  std::string_view removed_;    // the statement that removed the with node, until it is reported
  std::string_view lastBlock_;  // the last statement that ends in a colon
};

}  // namespace

StatementRulePointer nodeRules(const TextRuleInput& input, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::EmptyLastBlock, RuleId::RedeclaredType,
                           RuleId::PeriodBehindSemicolon, RuleId::RemovedNode})) {
    return nullptr;
  }
  return std::make_unique<NodeRules>(input, found);
}

}  // namespace vsa_tools
