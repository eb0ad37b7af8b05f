// Rules about arrays: elements that no statement names, and "[*]" where an index was probably
// intended.
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/vsa/check/rules/walk/path_steps.h"
#include "tools/vsa/check/rules/walk/statement_rule.h"
#include "tools/vsa/check/rules/walk/text_walk.h"
#include "tools/vsa/check/text/key_map.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

namespace {

/// A set of indices. It stores intervals, so that a large gap takes as little memory as a small
/// one.
class IndexSet {
 public:
  bool isEmpty() const { return intervals_.empty(); }
  std::uint64_t size() const { return size_; }
  /// Returns the lowest index. The set must not be empty.
  std::uint64_t first() const { return intervals_.begin()->first; }

  /// Adds the indices from `begin` (inclusive) to `end` (exclusive). They must be above all others.
  void append(std::uint64_t begin, std::uint64_t end) {
    intervals_.emplace_hint(intervals_.end(), begin, end);
    size_ += end - begin;
  }

  void remove(std::uint64_t index) {
    auto after = intervals_.upper_bound(index);
    if (after == intervals_.begin()) return;
    const auto found = std::prev(after);
    const auto [begin, end] = *found;
    if (index >= end) return;
    intervals_.erase(found);
    if (begin < index) intervals_.emplace(begin, index);
    if (index + 1 < end) intervals_.emplace(index + 1, end);
    --size_;
  }

 private:
  std::map<std::uint64_t, std::uint64_t> intervals_;  // the end of each interval, by its begin
  std::uint64_t size_ = 0;
};

/// The missing elements of an array: those that no statement has named yet.
struct Gap {
  std::string array;  // the path of the array, shortened
  IndexSet missing;
  std::string_view next;       // the first index before which some are missing: a view of the text
  PathKey name = 0, node = 0;  // the key of the node's name, and its key in NodeGenerations
};

/// What the statements so far show about an array.
struct ArrayUse {
  std::uint64_t size = 0;
  std::unique_ptr<Gap> gap;  // null if no elements are missing
};

class ArrayRules final : public StatementRule {
 public:
  explicit ArrayRules(RuleFindings& found) : StatementRule(NODE | LONG_PATH), found_(found) {}

  void visit(const StatementView& view) override {
    if (view.hasPath()) {
      visitPath(view);
    } else {
      visitNode(view);
    }
  }

  void finish() override {
    if (!found_.isEnabled(RuleId::ArrayGap)) return;
    for (const auto& [key, array] : arrays_) {
      if (array.gap) addGap(*array.gap);
    }
  }

 private:
  /// A statement with "[*]", which appends an element.
  struct Append {
    PathKey array = 0;
    std::string_view members;  // the path after the "[*]"
    std::uint64_t index = 0;
    std::string_view star;
    std::size_t statement = 0;  // the index of the statement
  };

  void visitPath(const StatementView& view) {
    Append append;
    append.statement = view.index;
    visitSteps(view, append);
    last_ = append;
  }

  void visitSteps(const StatementView& view, Append& append) {
    PathKey path = nodes_.keyOf(view.nodeKey);
    indices_.clear();
    PathSteps steps(view.statement.path);
    for (std::string_view step; steps.next(step);) {
      if (!isIndex(step)) {
        path = keyOfMember(path, step);
        continue;
      }
      ArrayUse& array = arrays_[path];
      if (append.array == 0 && isStar(step)) {
        append = {path, steps.rest(), array.size, step, view.index};
        checkMembers(view, append);
      }
      const std::uint64_t index = use(array, view, step);
      indices_.push_back(index);
      path = keyOfElement(path, index);
    }
  }

  // Records the nodes that this text creates, and those that it removes. The elements of an array
  // are known only in a node that this text has created.
  void visitNode(const StatementView& view) {
    if (view.kind() == vsa::StatementKind::Remove) {
      nodes_.remove(view.nodeKey);
    } else if (!isWord(view.statement.type, "with") && !isWord(view.statement.type, "define")) {
      made_.insert(view.nodeKey);
    }
  }

  // Returns the path of the array for a message. It ends before the index `last`, and has numbers
  // instead of "[*]".
  std::string shownArray(const StatementView& view, std::string_view last) const {
    std::string path = shortened(view.node());
    auto index = indices_.begin();
    PathSteps steps(view.statement.path);
    for (std::string_view step; steps.next(step) && step.data() != last.data();) {
      if (isIndex(step)) {
        path += '[' + std::to_string(*index++) + ']';
      } else {
        path += '.' + shortened(step);
      }
    }
    return shortened(path);
  }

  // Records that a statement names the element with the index `step`. Returns the index, or 0 if it
  // has no number.
  std::uint64_t use(ArrayUse& array, const StatementView& view, std::string_view step) {
    if (isStar(step)) return array.size++;
    const std::optional<std::uint64_t> index = numberIn(step);
    if (!index) return 0;
    if (*index < array.size) {
      if (array.gap) array.gap->missing.remove(*index);
      return *index;
    }
    if (*index > array.size) addMissing(array, *index, view, step);
    array.size = *index + 1;
    return *index;
  }

  // Records as missing the elements between the present end of the array and `index`. Does nothing
  // if the rule ArrayGap is disabled.
  void addMissing(ArrayUse& array, std::uint64_t index, const StatementView& view,
                  std::string_view step) {
    if (!found_.isEnabled(RuleId::ArrayGap)) return;
    if (!array.gap || array.gap->missing.isEmpty()) {
      array.gap = std::make_unique<Gap>();
      array.gap->array = shownArray(view, step);
      array.gap->next = step;
      array.gap->name = view.nodeKey;
      array.gap->node = nodes_.keyOf(view.nodeKey);
    }
    array.gap->missing.append(array.size, index);
  }

  void addGap(const Gap& gap) {
    const bool isMade = made_.contains(gap.name) && nodes_.keyOf(gap.name) == gap.node;
    if (gap.missing.isEmpty() || !isMade) return;
    const std::string first = std::to_string(gap.missing.first());
    const std::uint64_t more = gap.missing.size() - 1;
    found_
        .add(RuleId::ArrayGap, found_.rangeOf(gap.next),
             "the element " + gap.array + '[' + first + ']' +
                 (more == 0 ? std::string() : " and " + std::to_string(more) + " more") +
                 " before this one " + (more == 0 ? "gets" : "get") + " no value")
        .hint = "`[" + first + "]` is the next index";
  }

  // Reports statements such as ".keys[*].time = 0.0; .keys[*].value = 1.0;", which create two
  // objects of one member each.
  void checkMembers(const StatementView& view, const Append& append) {
    if (append.statement != last_.statement + 1) return;
    if (append.members.empty() || append.array != last_.array || last_.members.empty()) return;
    if (append.members == last_.members || !found_.isEnabled(RuleId::HalfNamedElement)) return;
    const std::string index = std::to_string(last_.index);
    Finding& finding =
        found_.add(RuleId::HalfNamedElement, found_.rangeOf(append.star),
                   "this appends another element; " + shownArray(view, append.star) + '[' + index +
                       "] has only " + shortened(last_.members.substr(1)));
    finding.hint = "write the index of the element, `[" + index + "]`";
    finding.notes.push_back({found_.rangeOf(last_.star), "the element before is appended here"});
  }

  RuleFindings& found_;
  NodeGenerations nodes_;
  std::unordered_map<PathKey, ArrayUse> arrays_;
  KeySet made_{64};
  Append last_;
  std::vector<std::uint64_t> indices_;  // the indices in the path of the visited statement
};

}  // namespace

StatementRulePointer arrayRules(const TextRuleInput&, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::ArrayGap, RuleId::HalfNamedElement})) return nullptr;
  return std::make_unique<ArrayRules>(found);
}

}  // namespace vsa_tools
