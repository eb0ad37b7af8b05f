// Rules about comments that resemble a version or a time, that set the time by chance, or that
// ignore findings of an unknown id.
#include <algorithm>
#include <cctype>
#include <optional>
#include <string>

#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/kinds.h"
#include "tools/vsa/check/rules/walk/statement_rule.h"
#include "tools/vsa/check/selection/comment_ignores.h"
#include "tools/vsa/check/text/digits.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

namespace {

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) {
    text.remove_suffix(1);
  }
  return text;
}

// Returns the text from the number on that follows `word` at the beginning of a text. The case of
// letters is ignored. Blanks, tabs, ":" or "=" must be between the word and the number. Returns an
// empty text if there is no such number.
std::string_view numberBehind(std::string_view text, std::string_view word) {
  if (text.size() <= word.size()) return {};
  const bool isWord = std::equal(word.begin(), word.end(), text.begin(), [](char a, char b) {
    return a == static_cast<char>(std::tolower(static_cast<unsigned char>(b)));
  });
  if (!isWord) return {};
  const std::size_t at = text.find_first_not_of(" \t:=", word.size());
  const bool isSeparated = at != word.size() && at != std::string_view::npos;
  return isSeparated && isDigit(text[at]) ? text.substr(at) : std::string_view();
}

// Returns whether `value` is what the comment is for, and not a part of a sentence. A version is
// one whole number. A date or a time begins with digits and a minus sign or colon between them.
bool isWholeValue(std::string_view value, RuleId rule) {
  const std::size_t end = value.find_first_not_of("0123456789");
  if (rule == RuleId::NearVersion) return end == std::string_view::npos;
  const bool isSeparated = end != std::string_view::npos && end + 1 < value.size();
  return isSeparated && (value[end] == '-' || value[end] == ':') && isDigit(value[end + 1]);
}

class CommentRules final : public StatementRule {
 public:
  explicit CommentRules(RuleFindings& found) : StatementRule(COMMENT), found_(found) {}

  void visit(const StatementView& view) override {
    const std::string_view comment = view.statement.text;
    const std::string_view text = trimmed(comment.substr(1));
    if (const std::optional<std::string_view> words = wordsForCheck(comment)) {
      checkIgnores(IgnoreComment(*words));
    }
    if (comment.find("version:") != std::string_view::npos) return;
    if (comment.find("time:") != std::string_view::npos) {
      checkTime(comment, text);
      return;
    }
    checkNear(comment, text, "version", RuleId::NearVersion);
    checkNear(comment, text, "time", RuleId::NearTime);
  }

 private:
  // Checks a comment that ignores findings. An id that does not exist ignores none.
  void checkIgnores(IgnoreComment comment) {
    if (!comment.isValid() || !found_.isEnabled(RuleId::UnknownIgnoredId)) return;
    for (std::string_view name = comment.nextName(); !name.empty(); name = comment.nextName()) {
      NearestName nearest(name);
      bool isKnown = name == "all";
      for (const FindingKind& kind : allKinds()) {
        isKnown = isKnown || name == kind.id || name == kind.group;
        nearest.consider(kind.id);
        nearest.consider(kind.group);
      }
      if (!isKnown) addUnknown(name, nearest.found());
    }
  }

  void addUnknown(std::string_view name, const std::optional<Suggestion>& suggestion) {
    Finding& finding = found_.add(RuleId::UnknownIgnoredId, found_.rangeOf(name),
                                  "there is no rule or group " + shortened(name));
    finding.hint = suggestion ? "did you mean `" + suggestion->name + "`?"
                              : std::string("`vsa explain` lists the ids");
  }

  void checkNear(std::string_view comment, std::string_view text, std::string_view word,
                 RuleId rule) {
    if (!found_.isEnabled(rule)) return;
    const std::string_view number = numberBehind(text, word);
    if (number.empty()) return;
    const std::string form = "# " + std::string(word) + ": ";
    const vsa::TextRange range = found_.rangeOf(comment);
    Finding& finding = found_.add(
        rule, range, "this comment does not set the " + std::string(word) + " of the file");
    if (!isWholeValue(number, rule)) {
      finding.hint = rule == RuleId::NearVersion
                         ? "a comment that sets it has only a whole number behind `" + form + '`'
                         : "a comment that sets it has a date or a time behind `" + form + '`';
      return;
    }
    const std::string corrected = form + std::string(number);
    finding.hint = "write `" + corrected + "`";
    const std::uint64_t begin = range.begin.offset;
    const auto end = static_cast<std::uint64_t>(text.data() + text.size() - comment.data());
    finding.edits = {{begin, begin + end, corrected}};
  }

  // Checks a comment with "time:" inside a longer word, or after other words.
  void checkTime(std::string_view comment, std::string_view text) {
    if (text.starts_with("time:") || !found_.isEnabled(RuleId::AccidentalTime)) return;
    const std::string_view value = trimmed(text.substr(text.find(':') + 1));
    if (value.empty()) return;
    found_
        .add(RuleId::AccidentalTime, found_.rangeOf(comment),
             "this comment sets the time of the file to '" + std::string(value) + "'")
        .hint = "put a blank before the colon, or write the comment without `time:`";
  }

  RuleFindings& found_;
};

}  // namespace

StatementRulePointer commentRules(const TextRuleInput&, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::NearVersion, RuleId::NearTime, RuleId::AccidentalTime,
                           RuleId::UnknownIgnoredId})) {
    return nullptr;
  }
  return std::make_unique<CommentRules>(found);
}

}  // namespace vsa_tools
