// Rules about arrays: elements that no statement names, and "[*]" where an index was meant.
#include <charconv>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <unordered_map>

#include "tools/vsa/check/rules/text/statement_rule.h"
#include "tools/vsa/check/rules/text/text_walk.h"

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;

// Elements that are named later are remembered up to this number for each array.
constexpr std::uint64_t MAX_MISSING = 4096;

/// What is known of an array.
struct ArrayUse {
  std::uint64_t size = 0;
  std::set<std::uint64_t> missing;  // indices below `size` that no statement has named
  vsa::TextRange gap;               // the index behind the first of them
};

class ArrayRules final : public StatementRule {
 public:
  explicit ArrayRules(RuleFindings& found) : found_(found) {}

  void visit(const StatementView& view) override {
    if (!view.hasPath()) {
      last_ = {};
      visitNode(view);
      return;
    }
    Append append;
    std::string path(view.node);
    for (std::size_t i = view.firstInput; i < view.pathEnd; ++i) {
      const vsa::SyntaxToken& token = view.token(i);
      if (token.kind != SyntaxKind::Brackets) {
        if (!token.is('.')) path += '.' + std::string(token.text);
        continue;
      }
      append.isFirst = append.array.empty() && isStar(token);
      if (append.isFirst) {
        append = {path, membersBehind(view, i), arrays_[path].size, token.range, true};
      }
      path += '[' + std::to_string(use(path, token)) + ']';
    }
    checkMembers(append);
    last_ = std::move(append);
  }

  void finish() override {
    if (!found_.isEnabled(RuleId::ArrayGap)) return;
    for (const auto& [path, array] : arrays_) {
      if (array.missing.empty() || !made_.contains(path.substr(0, path.find('.')))) continue;
      const std::uint64_t first = *array.missing.begin();
      found_
          .add(RuleId::ArrayGap, array.gap,
               "the element " + path + '[' + std::to_string(first) + ']' +
                   (array.missing.size() == 1
                        ? std::string()
                        : " and " + std::to_string(array.missing.size() - 1) + " more") +
                   " before this one " + (array.missing.size() == 1 ? "gets" : "get") + " no value")
          .hint = "`[" + std::to_string(first) + "]` is the next index";
    }
  }

 private:
  // Only of a node that this text makes is it known which elements there are.
  void visitNode(const StatementView& view) {
    if (view.kind() == vsa::StatementKind::Comment) return;
    if (view.kind() == vsa::StatementKind::Remove) forget(view.node);
    const bool isWith = isWord(view.token(0), "with") || isWord(view.token(0), "define");
    if (view.kind() != vsa::StatementKind::Remove && !isWith) made_.emplace(view.node);
  }

  /// A statement that appends an object by its first member.
  struct Append {
    std::string array;
    std::string members;  // the path behind the "[*]"
    std::uint64_t index = 0;
    vsa::TextRange star;
    bool isFirst = false;
  };

  static bool isStar(const vsa::SyntaxToken& token) {
    return token.text.find('*') != std::string_view::npos;
  }

  static std::string membersBehind(const StatementView& view, std::size_t token) {
    std::string members;
    for (std::size_t i = token + 1; i < view.pathEnd; ++i) members += view.token(i).text;
    return members;
  }

  // Names an element and returns its index.
  std::uint64_t use(const std::string& path, const vsa::SyntaxToken& token) {
    ArrayUse& array = arrays_[path];
    if (isStar(token)) return array.size++;
    std::uint64_t index = 0;
    const std::size_t digits = token.text.find_first_of("0123456789");
    if (digits == std::string_view::npos) return 0;
    std::from_chars(token.text.data() + digits, token.text.data() + token.text.size(), index);
    if (index < array.size) {
      array.missing.erase(index);
      return index;
    }
    if (index > array.size && array.missing.empty()) array.gap = token.range;
    for (std::uint64_t i = array.size; i < index && array.missing.size() < MAX_MISSING; ++i) {
      array.missing.insert(i);
    }
    array.size = index + 1;
    return index;
  }

  // ".keys[*].time = 0.0; .keys[*].value = 1.0;" makes two objects of one member each.
  void checkMembers(const Append& append) {
    if (append.members.empty() || append.array != last_.array || last_.members.empty()) return;
    if (append.members == last_.members || !found_.isEnabled(RuleId::HalfNamedElement)) return;
    const std::string index = std::to_string(last_.index);
    Finding& finding = found_.add(RuleId::HalfNamedElement, append.star,
                                  "this appends another element; " + append.array + '[' + index +
                                      "] has only " + last_.members.substr(1));
    finding.hint = "write the index of the element, `[" + index + "]`";
    finding.notes.push_back({last_.star, "the element before is appended here"});
  }

  void forget(std::string_view node) {
    std::erase_if(arrays_, [&](const auto& array) {
      const std::string_view path = array.first;
      return path.starts_with(node) && path.substr(node.size()).starts_with('.');
    });
  }

  RuleFindings& found_;
  std::unordered_map<std::string, ArrayUse> arrays_;
  std::set<std::string, std::less<>> made_;
  Append last_;
};

}  // namespace

StatementRulePointer arrayRules(const RuleInput&, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::ArrayGap, RuleId::HalfNamedElement})) return nullptr;
  return std::make_unique<ArrayRules>(found);
}

}  // namespace vsa_tools
