// Rules about arrays: elements that no statement names, and "[*]" where an index was meant.
#include <charconv>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/vsa/check/rules/text/statement_rule.h"
#include "tools/vsa/check/rules/text/text_walk.h"
#include "tools/vsa/check/text/key_set.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;

// Elements that are named later are remembered up to this number for each array.
constexpr std::uint64_t MAX_MISSING = 4096;

/// The elements of an array that no statement has named.
struct Gap {
  std::string array;  // its path, shortened
  std::set<std::uint64_t> missing;
  vsa::TextRange next;         // the index behind the first of them
  PathKey name = 0, node = 0;  // of the node, without and with its generation
};

/// What is known of an array.
struct ArrayUse {
  std::uint64_t size = 0;
  std::unique_ptr<Gap> gap;  // null if there is none
};

class ArrayRules final : public StatementRule {
 public:
  explicit ArrayRules(RuleFindings& found) : found_(found) {}

  void visit(const StatementView& view) override {
    if (view.hasPath()) {
      visitPath(view);
    } else {
      last_ = {};
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
  /// A statement that appends an object by its first member.
  struct Append {
    PathKey array = 0;
    std::string_view members;  // the path behind the "[*]"
    std::uint64_t index = 0;
    vsa::TextRange star;
  };

  void visitPath(const StatementView& view) {
    Append append;
    const PathKey node = nodes_.keyOf(view.nodeKey);
    PathKey path = node;
    indices_.clear();
    for (std::size_t i = view.firstInput; !view.isPlainPath() && i < view.pathEnd; ++i) {
      const vsa::SyntaxToken& token = view.token(i);
      if (token.kind != SyntaxKind::Brackets) {
        if (!token.is('.')) path = keyOfMember(path, token.text);
        continue;
      }
      ArrayUse& array = arrays_[path];
      if (append.array == 0 && isStar(token)) {
        append = {path, membersBehind(view, i), array.size, token.range};
        checkMembers(view, i, append);
      }
      const std::uint64_t index = use(array, view, i);
      indices_.push_back(index);
      path = keyOfElement(path, index);
    }
    last_ = append;
  }

  // Only of a node that this text makes is it known which elements there are.
  void visitNode(const StatementView& view) {
    if (view.kind() == vsa::StatementKind::Comment) return;
    if (view.kind() == vsa::StatementKind::Remove) {
      nodes_.remove(view.nodeKey);
    } else if (!isWord(view.token(0), "with") && !isWord(view.token(0), "define")) {
      made_.insert(view.nodeKey);
    }
  }

  static bool isStar(const vsa::SyntaxToken& token) {
    return token.text.find('*') != std::string_view::npos;
  }

  static std::string_view membersBehind(const StatementView& view, std::size_t token) {
    if (token + 1 == view.pathEnd) return {};
    const char* const begin = view.token(token + 1).text.data();
    const std::string_view last = view.token(view.pathEnd - 1).text;
    return {begin, static_cast<std::size_t>(last.data() + last.size() - begin)};
  }

  // The path up to the token, for a message.
  std::string shownArray(const StatementView& view, std::size_t end) const {
    std::string path = shortened(view.node);
    auto index = indices_.begin();
    for (std::size_t i = view.firstInput; i < end; ++i) {
      const vsa::SyntaxToken& token = view.token(i);
      if (token.kind == SyntaxKind::Brackets) {
        path += '[' + std::to_string(*index++) + ']';
      } else if (!token.is('.')) {
        path += '.' + shortened(token.text);
      }
    }
    return shortened(path);
  }

  // Names the element that token `i` is the index of. Returns the index.
  std::uint64_t use(ArrayUse& array, const StatementView& view, std::size_t i) {
    const vsa::SyntaxToken& token = view.token(i);
    if (isStar(token)) return array.size++;
    std::uint64_t index = 0;
    const std::size_t digits = token.text.find_first_of("0123456789");
    if (digits == std::string_view::npos) return 0;
    std::from_chars(token.text.data() + digits, token.text.data() + token.text.size(), index);
    if (index < array.size) {
      if (array.gap) array.gap->missing.erase(index);
      return index;
    }
    if (index > array.size) leaveOut(array, index, view, i);
    array.size = index + 1;
    return index;
  }

  // The elements up to `index` are not named yet.
  void leaveOut(ArrayUse& array, std::uint64_t index, const StatementView& view, std::size_t i) {
    if (!array.gap || array.gap->missing.empty()) {
      array.gap = std::make_unique<Gap>();
      array.gap->array = shownArray(view, i);
      array.gap->next = view.token(i).range;
      array.gap->name = view.nodeKey;
      array.gap->node = nodes_.keyOf(view.nodeKey);
    }
    std::set<std::uint64_t>& missing = array.gap->missing;
    for (std::uint64_t at = array.size; at < index && missing.size() < MAX_MISSING; ++at) {
      missing.insert(missing.end(), at);
    }
  }

  void addGap(const Gap& gap) {
    const bool isMade = made_.contains(gap.name) && nodes_.keyOf(gap.name) == gap.node;
    if (gap.missing.empty() || !isMade) return;
    const std::string first = std::to_string(*gap.missing.begin());
    const std::size_t more = gap.missing.size() - 1;
    found_
        .add(RuleId::ArrayGap, gap.next,
             "the element " + gap.array + '[' + first + ']' +
                 (more == 0 ? std::string() : " and " + std::to_string(more) + " more") +
                 " before this one " + (more == 0 ? "gets" : "get") + " no value")
        .hint = "`[" + first + "]` is the next index";
  }

  // ".keys[*].time = 0.0; .keys[*].value = 1.0;" makes two objects of one member each.
  void checkMembers(const StatementView& view, std::size_t star, const Append& append) {
    if (append.members.empty() || append.array != last_.array || last_.members.empty()) return;
    if (append.members == last_.members || !found_.isEnabled(RuleId::HalfNamedElement)) return;
    const std::string index = std::to_string(last_.index);
    Finding& finding = found_.add(RuleId::HalfNamedElement, append.star,
                                  "this appends another element; " + shownArray(view, star) + '[' +
                                      index + "] has only " + shortened(last_.members.substr(1)));
    finding.hint = "write the index of the element, `[" + index + "]`";
    finding.notes.push_back({last_.star, "the element before is appended here"});
  }

  RuleFindings& found_;
  NodeGenerations nodes_;
  std::unordered_map<PathKey, ArrayUse> arrays_;
  KeySet made_;
  Append last_;
  std::vector<std::uint64_t> indices_;  // of the statement that is visited
};

}  // namespace

StatementRulePointer arrayRules(const RuleInput&, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::ArrayGap, RuleId::HalfNamedElement})) return nullptr;
  return std::make_unique<ArrayRules>(found);
}

}  // namespace vsa_tools
