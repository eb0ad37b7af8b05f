// Rules about inputs that several statements assign.
//
// A first pass over the statements finds such inputs and stores only their keys. Most texts have no
// such inputs. In other texts, a second pass inspects the statements of these inputs.
#include <algorithm>
#include <bit>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/vsa/check/rules/walk/statement_rule.h"
#include "tools/vsa/check/rules/walk/text_walk.h"
#include "tools/vsa/check/text/key_map.h"

namespace vsa_tools {

namespace {

using vsa::StatementKind;

/// The keys of the inputs to which statements assign a value or a connection. The keys are hashes
/// of the paths as they are written.
class AssignedInputs {
 public:
  /// The result of of() for a statement that the rules ignore. No std::optional is returned,
  /// because GCC copies one by a load of both its members right after it has stored each of them,
  /// and the processor waits for the stores. That took 4 % of the time of vsa check for 2,000 files
  /// of 7 KB (`./dev bench --check`). An input has this key with a probability of 2^-64.
  static constexpr PathKey NONE = 0;

  /// Returns the key of the input that the statement assigns, or NONE. Must be called for all
  /// statements in their order, because they may remove nodes.
  PathKey of(const StatementView& view) {
    if (view.kind() == StatementKind::Remove) nodes_.remove(view.nodeKey);
    if (isMisplaced(view)) return NONE;
    if (!view.hasPath() || isOfNoNode(view) || isNull(view)) return NONE;
    const std::string_view path = view.statement.path;
    // "[*]" appends another element each time, so such a path has no key.
    const bool isNewElement =
        !view.statement.isPlainPath && path.find('*') != std::string_view::npos;
    return isNewElement ? NONE : keyOfMember(nodes_.keyOf(view.nodeKey), path);
  }

 private:
  static bool isOfNoNode(const StatementView& view) {
    return view.isOfWithNode() && view.withNode.empty();
  }

  // Returns whether the value is null. "= null" declares an input for a later link, and gives it no
  // value.
  static bool isNull(const StatementView& view) {
    return view.statement.valueKind == vsa::SyntaxKind::Null;
  }

  // Returns whether the path of the statement begins with a period directly after a declaration
  // that ends in a semicolon. Also true for later paths that begin with a period, until a statement
  // sets another with node. The input was probably meant for the declared node, but belongs to the
  // with node. Another rule reports that mistake.
  bool isMisplaced(const StatementView& view) {
    if (view.kind() == StatementKind::Block) isMisplaced_ = false;
    if (!view.hasPath() || !view.isOfWithNode()) return false;
    isMisplaced_ = isMisplaced_ || !view.declarationBefore.empty();
    return isMisplaced_;
  }

  NodeGenerations nodes_;
  bool isMisplaced_ = false;
};

class AssignmentRules final : public StatementRule {
 public:
  AssignmentRules(const TextRuleInput& input, RuleFindings& found)
      : StatementRule(NODE | PATH),
        text_(input.statements),
        found_(found),
        isBothFound_(found.isEnabled(RuleId::SetAndConnected)),
        assigned_(slotsFor(input.statements.size())) {
    waiting_.reserve(MAX_WAITING);
  }

  void visit(const StatementView& view) override {
    const PathKey input = inputs_.of(view);
    if (input == AssignedInputs::NONE) return;
    const bool isOther = view.isLink() && !isBothFound_;
    if (waiting_.size() == MAX_WAITING) insertWaiting();
    const PathKey assigned = isOther ? ~input : input;
    assigned_.prefetch(assigned);
    waiting_.push_back({assigned, input});
  }

  void finish() override {
    insertWaiting();
    if (repeated_.empty()) return;
    TextWalk walk(text_);
    AssignedInputs inputs;
    for (StatementView view; walk.next(view);) {
      const PathKey input = inputs.of(view);
      if (input == AssignedInputs::NONE) continue;
      const auto uses = repeated_.find(input);
      if (uses != repeated_.end()) check(view, uses->second);
    }
  }

 private:
  // The number of keys that are inserted together. When the last of them is prefetched, the slot of
  // the first is already in the cache. In a text of 46 MB, insertions one by one took a fifth of
  // the whole time (`./dev bench --check`, one file of nodes of all kinds).
  static constexpr std::size_t MAX_WAITING = 16;

  // Returns the initial number of slots of the set for a text. A statement of a small text has some
  // 40 bytes, so the set need not grow there, which would insert all keys again.
  static std::size_t slotsFor(std::size_t textBytes) {
    constexpr std::size_t BYTES_PER_SLOT = 16, MIN_SLOTS = 64, MAX_SLOTS = 4096;
    return std::bit_ceil(std::clamp(textBytes / BYTES_PER_SLOT, MIN_SLOTS, MAX_SLOTS));
  }

  struct Assigned {
    PathKey assigned;  // the key for the set `assigned_`
    PathKey input;
  };

  void insertWaiting() {
    for (const Assigned& one : waiting_) {
      if (!assigned_.insert(one.assigned)) repeated_[one.input] = {};
    }
    waiting_.clear();
  }

  /// The last statement that assigns a value to an input, and the last one that connects it.
  struct Uses {
    std::optional<std::string_view> value;
    std::optional<std::string_view> connection;
  };

  void check(const StatementView& view, Uses& uses) {
    const bool isSet = uses.value.has_value();
    const bool isConnected = uses.connection.has_value();
    const bool isTwice = view.isLink() ? isConnected : isSet;
    if (isTwice) {
      addTwice(view, *(view.isLink() ? uses.connection : uses.value));
    } else if (isSet != isConnected) {
      addBoth(view, view.isLink() ? *uses.value : *uses.connection);
    }
    (view.isLink() ? uses.connection : uses.value) = view.statement.text;
  }

  void addTwice(const StatementView& view, std::string_view before) {
    if (!found_.isEnabled(RuleId::AssignedTwice)) return;
    Finding& finding = found_.add(RuleId::AssignedTwice, found_.rangeOf(view.wholePath()),
                                  "the input " + view.shownPath() + " gets " +
                                      (view.isLink() ? "a connection" : "a value") +
                                      " twice; the last one counts");
    finding.notes.push_back({found_.rangeOf(before), "the first time"});
    finding.hint = "remove one of the two";
  }

  void addBoth(const StatementView& view, std::string_view other) {
    if (!isBothFound_) return;
    Finding& finding =
        found_.add(RuleId::SetAndConnected, found_.rangeOf(view.wholePath()),
                   "the input " + view.shownPath() + " has both a value and a connection");
    finding.notes.push_back(
        {found_.rangeOf(other), view.isLink() ? "the value" : "the connection"});
  }

  std::string_view text_;
  RuleFindings& found_;
  bool isBothFound_;
  AssignedInputs inputs_;
  KeySet assigned_;
  std::vector<Assigned> waiting_;
  std::unordered_map<PathKey, Uses> repeated_;
};

}  // namespace

StatementRulePointer assignmentRules(const TextRuleInput& input, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::AssignedTwice, RuleId::SetAndConnected})) return nullptr;
  return std::make_unique<AssignmentRules>(input, found);
}

}  // namespace vsa_tools
