// Rules about strings: escape sequences, paths of files, and names of nodes.
#include <charconv>
#include <string>
#include <vector>

#include "tools/vsa/check/rules/walk/path_steps.h"
#include "tools/vsa/check/rules/walk/statement_rule.h"
#include "tools/vsa/check/rules/walk/text_walk.h"
#include "tools/vsa/check/text/key_map.h"

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;

bool isHex(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// An escape sequence in a string. It begins with a backslash.
struct Escape {
  enum class Meaning { Backslash, Punctuation, Character, Number, Unknown };
  std::size_t at = 0;     // the offset of the backslash in the token
  std::size_t bytes = 2;  // the length of the escape sequence, including the backslash
  Meaning meaning = Meaning::Unknown;
};

// Returns whether the text after a backslash completes "\xHH" or "\uHHHH". For a NUL the result is
// false, because the string keeps such a sequence unchanged.
bool isNumeric(std::string_view behind, std::size_t digits) {
  if (behind.size() < digits + 1) return false;
  bool isZero = true;
  for (std::size_t i = 1; i <= digits; ++i) {
    if (!isHex(behind[i])) return false;
    isZero = isZero && behind[i] == '0';
  }
  return !isZero;
}

constexpr std::string_view CHARACTER_LETTERS = "abfnrtv";

// Returns the hint for an unknown escape sequence that begins with `letter`. Returns an empty text
// if only the backslash itself may have been intended.
std::string hintForUnknown(char letter) {
  const char lower = static_cast<char>(letter | 0x20);
  if (letter == 'x') return "`\\x` takes two hexadecimal digits that are not both 0";
  if (letter == 'u') return "`\\u` takes four hexadecimal digits that are not all 0";
  if (letter == 'e') return "did you mean `\\x1b`?";
  const bool isOtherCase =
      isLetter(letter) &&
      (CHARACTER_LETTERS.find(lower) != std::string_view::npos || lower == 'x' || lower == 'u');
  return isOtherCase ? std::string("did you mean `\\") + lower + "`?" : std::string();
}

// Whether `behind` is "uHHHH" for a surrogate with the given highest bits: 0xD800 or 0xDC00.
bool isSurrogate(std::string_view behind, unsigned int first) {
  unsigned int unit = 0;
  if (!behind.starts_with('u') || !isNumeric(behind, 4)) return false;
  std::from_chars(behind.data() + 1, behind.data() + 5, unit, 16);
  return (unit & 0xFC00U) == first;
}

// Returns the escape sequence "\uHHHH" at `at`. Two surrogates that form one character are one
// escape sequence. Any other surrogate has the meaning Unknown, because the string keeps it as it
// is written.
Escape unicodeEscape(std::string_view behind, std::size_t at) {
  constexpr std::size_t BYTES = 6;
  const std::string_view next = behind.substr(BYTES - 1);
  const bool isHigh = isSurrogate(behind, 0xD800);
  if (isHigh && next.starts_with('\\') && isSurrogate(next.substr(1), 0xDC00)) {
    return {at, 2 * BYTES, Escape::Meaning::Number};
  }
  const bool isAlone = isHigh || isSurrogate(behind, 0xDC00);
  return {at, BYTES, isAlone ? Escape::Meaning::Unknown : Escape::Meaning::Number};
}

Escape escapeAt(std::string_view token, std::size_t at) {
  using Meaning = Escape::Meaning;
  const std::string_view behind = token.substr(at + 1);
  const char letter = behind.front();
  if (letter == '\\') return {at, 2, Meaning::Backslash};
  if (letter == '"' || letter == '\'' || letter == '/') return {at, 2, Meaning::Punctuation};
  if (CHARACTER_LETTERS.find(letter) != std::string_view::npos) return {at, 2, Meaning::Character};
  if (letter == 'x' && isNumeric(behind, 2)) return {at, 4, Meaning::Number};
  if (letter == 'u' && isNumeric(behind, 4)) return unicodeEscape(behind, at);
  return {at, 2, Meaning::Unknown};
}

std::vector<Escape> escapesOf(std::string_view token) {
  std::vector<Escape> escapes;
  for (std::size_t at = token.find('\\'); at != std::string_view::npos && at + 1 < token.size();) {
    escapes.push_back(escapeAt(token, at));
    at = token.find('\\', at + escapes.back().bytes);
  }
  return escapes;
}

// Returns whether the text looks like a path: it has a drive, or a file suffix and no blank, such
// as "textures\new.png".
bool looksLikePath(std::string_view content) {
  const bool hasDrive =
      content.size() > 3 && isLetter(content[0]) && content.substr(1).starts_with(":\\");
  if (hasDrive) return true;
  const std::size_t period = content.rfind('.');
  if (period == std::string_view::npos || period == 0) return false;
  const std::string_view suffix = content.substr(period + 1);
  if (suffix.size() < 2 || suffix.size() > 5) return false;
  for (const char c : suffix) {
    if (!isLetter(c) && (c < '0' || c > '9')) return false;
  }
  return content.find(' ') == std::string_view::npos;
}

class StringRules final : public StatementRule {
 public:
  StringRules(const TextRuleInput& input, RuleFindings& found)
      : StatementRule(STRING | REFERENCE), input_(input), found_(found) {}

  void visit(const StatementView& view) override {
    const vsa::StatementOutline& statement = view.statement;
    if (statement.valueKind == SyntaxKind::Word) {
      referring_.insert(keyOfLastName(statement));
    } else {
      checkEscapes(statement.value);
      if (statement.value.size() > 2) withString_.insert(keyOfLastName(statement));
    }
  }

  // Finds strings that should be references. Most texts have no input name with both strings and
  // references. In other texts, a second pass inspects the strings of such inputs.
  void finish() override {
    if (!found_.isEnabled(RuleId::StringForReference)) return;
    if (!withString_.hasAnyOf(referring_)) return;
    TextWalk walk(input_.statements);
    for (StatementView view; walk.next(view);) {
      const vsa::StatementOutline& statement = view.statement;
      if (view.isAssignment() && statement.valueKind == SyntaxKind::String &&
          referring_.contains(keyOfLastName(statement))) {
        checkName(statement.value);
      }
    }
  }

 private:
  // Returns the key of the name of the input or member that the statement assigns.
  static PathKey keyOfLastName(const vsa::StatementOutline& statement) {
    return keyOfNode(statement.isPlainPath ? statement.path : lastName(statement.path));
  }

  void checkEscapes(std::string_view string) {
    if (string.find('\\') == std::string_view::npos) return;
    const std::vector<Escape> escapes = escapesOf(string);
    const std::string_view content = string.substr(1, string.size() - 2);
    const bool isPath = looksLikePath(content);
    for (const Escape& escape : escapes) {
      if (isPath && escape.meaning == Escape::Meaning::Character) {
        addEscape(RuleId::EscapeInPath, string, escape, escapes);
        return;
      }
    }
    for (const Escape& escape : escapes) {
      if (escape.meaning != Escape::Meaning::Unknown) continue;
      addEscape(RuleId::UnknownEscape, string, escape, escapes);
      return;
    }
  }

  void addEscape(RuleId rule, std::string_view string, const Escape& escape,
                 const std::vector<Escape>& escapes) {
    if (!found_.isEnabled(rule)) return;
    const std::string written(string.substr(escape.at, escape.bytes));
    const bool isPath = rule == RuleId::EscapeInPath;
    Finding& finding = found_.add(
        rule, found_.rangeOf(string.substr(escape.at, escape.bytes)),
        isPath ? "'" + written + "' is one character here, and the string looks like a path"
               : "'" + written + "' is no escape sequence; the backslash stays in the string");
    const std::string_view content = string.substr(1, string.size() - 2);
    const bool isOfPath = looksLikePath(content);
    if (!isOfPath && escape.bytes > 2) {
      finding.hint = "a surrogate needs its partner: `\\uD83D\\uDE00` is one character";
    } else if (!isOfPath) {
      finding.hint = hintForUnknown(string[escape.at + 1]);
    }
    if (!finding.hint.empty()) return;  // what was meant is not certain enough for an edit
    finding.hint = isOfPath ? "write forward slashes, or two backslashes" : "write two backslashes";
    const std::uint64_t begin = finding.range->begin.offset - escape.at;
    for (const Escape& other : escapes) {
      const bool isSingle = other.meaning == Escape::Meaning::Unknown ||
                            (isPath && other.meaning == Escape::Meaning::Character);
      const std::uint64_t at = begin + other.at;
      if (isSingle) finding.edits.push_back({at, at, "\\"});
    }
  }

  void checkName(std::string_view string) {
    const std::string_view name = string.substr(1, string.size() - 2);
    if (name.empty() || !input_.scene()[name]) return;
    const vsa::TextRange range = found_.rangeOf(string);
    Finding& finding =
        found_.add(RuleId::StringForReference, range,
                   "this is a string; the node " + std::string(name) + " is named without quotes");
    finding.hint = "write `" + std::string(name) + '`';
    finding.edits = {{range.begin.offset, range.end.offset, std::string(name)}};
  }

  const TextRuleInput& input_;
  RuleFindings& found_;
  // The keys of the names of inputs: `referring_` has the inputs to which statements assign
  // references, and `withString_` those to which they assign strings.
  KeySet referring_{64}, withString_{64};
};

}  // namespace

StatementRulePointer stringRules(const TextRuleInput& input, RuleFindings& found) {
  if (!found.isAnyEnabled(
          {RuleId::StringForReference, RuleId::EscapeInPath, RuleId::UnknownEscape})) {
    return nullptr;
  }
  return std::make_unique<StringRules>(input, found);
}

}  // namespace vsa_tools
