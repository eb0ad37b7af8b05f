// Rules about declarations, and about the with node of paths that begin with a period.
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/rules/text/keyword_types.h"
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
    checkUnknown();
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
    if (isWith) recordWith(view);
    if (view.kind() == StatementKind::Define) defined_.insert(nodes_.keyOf(view.nodeKey));
    if (declares && !isWith) checkType(view);
  }

  void checkType(const StatementView& view) {
    const std::string_view type = view.statement.type;
    const auto [known, isNew] =
        declared_.insert(nodes_.keyOf(view.nodeKey), {type, view.statement.text});
    if (isNew) return checkKeyword(view);
    if (known.type == type) return;
    if (!found_.isEnabled(RuleId::RedeclaredType)) return;
    Finding& finding = found_.add(RuleId::RedeclaredType, found_.rangeOf(type),
                                  "this finds the node " + shortened(view.node()) +
                                      ", which is a " + shortened(known.type) + " and stays one");
    finding.notes.push_back({found_.rangeOf(known.statement), "declared here"});
    if (hintForEnd(view, finding)) {
      reported_ = view.statement.text;
      return;
    }
    const std::optional<Suggestion> keyword = keywordForKnownNode(view);
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
    if (!isKeyword(type)) return false;
    const char* const end = isWord(type, "with") ? ":" : ";";
    const std::uint64_t at = finding.range->begin.offset + view.statement.text.size();
    finding.hint = "a statement with the word `" + std::string(type) + "` ends with `" + end + '`';
    finding.edits = {{at - 1, at, end}};
    // The inputs after "define a:" need the with node that the colon seems to set.
    if (isWord(type, "define")) {
      const std::string with = "with " + std::string(view.node()) + ':';
      finding.hint += ", and `" + with + "` sets the node";
      finding.edits[0].text = "; " + with;
    }
    return true;
  }

  // Checks the declaration of a new node.
  void checkKeyword(const StatementView& view) {
    if (!found_.isEnabled(RuleId::KeywordAsType)) return;
    const std::string_view type = view.statement.type;
    const std::string_view keyword = keywordForNewNode(type);
    if (keyword.empty() && !isKeyword(type)) return;
    Finding& finding = found_.add(RuleId::KeywordAsType, found_.rangeOf(type),
                                  "this declares a node of the type " + std::string(type));
    if (hintForEnd(view, finding)) {
      reported_ = view.statement.text;
      return;
    }
    finding.hint = "did you mean `" + std::string(keyword) + "`?";
    finding.edits = {
        {finding.range->begin.offset, finding.range->end.offset, std::string(keyword)}};
  }

  // Records a `with` for a node that no statement before it has declared or defined.
  void recordWith(const StatementView& view) {
    constexpr std::size_t MAX_UNKNOWN = 64;
    if (!found_.isEnabled(RuleId::WithUnknownNode) || unknown_.size() == MAX_UNKNOWN) return;
    const PathKey node = nodes_.keyOf(view.nodeKey);
    if (declared_.contains(node) || !defined_.insert(node)) return;
    unknown_.push_back({view.node(), NearestName(view.node()), {}});
  }

  // Finds the nodes that were probably meant by the recorded statements: nodes that are declared
  // later, and nodes with a similar name.
  void checkUnknown() {
    TextWalk walk(statements_);
    for (StatementView view; !unknown_.empty() && walk.next(view);) {
      const bool declares = !view.hasPath() && view.kind() != StatementKind::Comment &&
                            view.kind() != StatementKind::Remove &&
                            !isWord(view.statement.type, "with");
      for (Unknown& unknown : unknown_) {
        if (declares) consider(view, unknown);
      }
    }
    for (const Unknown& unknown : unknown_) addUnknown(unknown);
  }

  struct Unknown {
    std::string_view name;
    NearestName nearest;
    std::string_view declaration;  // a later declaration of the name
  };

  static void consider(const StatementView& view, Unknown& unknown) {
    if (view.node() != unknown.name) {
      unknown.nearest.consider(view.node());
    } else if (view.node().data() > unknown.name.data() && unknown.declaration.empty()) {
      unknown.declaration = view.statement.text;
    }
  }

  void addUnknown(const Unknown& unknown) {
    const std::optional<Suggestion> similar = unknown.nearest.found();
    const bool isSimilar = similar && similar->isSure;
    if (unknown.declaration.empty() && !isSimilar) return;
    Finding& finding = found_.add(RuleId::WithUnknownNode, found_.rangeOf(unknown.name),
                                  "no node " + shortened(unknown.name) +
                                      " is declared before; this creates one without a type");
    if (!unknown.declaration.empty()) {
      finding.hint = "declare the node before this line";
      finding.notes.push_back({found_.rangeOf(unknown.declaration), "declared here"});
      return;
    }
    finding.hint = "did you mean `" + similar->name + "`?";
    finding.edits = {{finding.range->begin.offset, finding.range->end.offset, similar->name}};
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
  KeySet defined_{64};            // the nodes of `define` and `with` statements
  std::vector<Unknown> unknown_;  // the nodes of `with` statements that nothing before declares
  std::string_view withNode_;
  std::string_view reported_;   // the last `with`, `remove` or `define` that ends wrongly
  std::string_view removed_;    // the statement that removed the with node, until it is reported
  std::string_view lastBlock_;  // the last statement that ends in a colon
};

}  // namespace

StatementRulePointer nodeRules(const TextRuleInput& input, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::EmptyLastBlock, RuleId::RedeclaredType,
                           RuleId::PeriodBehindSemicolon, RuleId::RemovedNode,
                           RuleId::KeywordAsType, RuleId::WithUnknownNode})) {
    return nullptr;
  }
  return std::make_unique<NodeRules>(input, found);
}

}  // namespace vsa_tools
