// Rules about lists of numbers whose content is not what they seem to say.
#include <string>

#include "tools/vsa/check/rules/text/statement_rule.h"
#include "tools/vsa/check/rules/text/text_walk.h"

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;
using vsa::SyntaxToken;

constexpr std::string_view WHITE = " \t\r\n\v\f";

struct TupleForm {
  std::string_view keyword;
  std::size_t components;
};

constexpr TupleForm TUPLES[] = {{"vec2", 2}, {"vec3", 3}, {"vec4", 4}, {"pos2", 2}, {"pos3", 3},
                                {"quat", 4}, {"rgba", 4}, {"mat3", 9}, {"mat4", 16}};

std::size_t componentsOf(const SyntaxToken& word) {
  for (const TupleForm& form : TUPLES) {
    if (isWord(word, form.keyword)) return form.components;
  }
  return 0;
}

// Whether a short list has at most `count` numbers and no brackets inside, as most have. The
// compiler vectorises the loop: it takes a tenth of the time of splitting the list.
bool isPlainTuple(std::string_view list, std::size_t count) {
  constexpr std::size_t MAX_BYTES = 255;  // `numbers` does not overflow
  if (list.size() > MAX_BYTES) return false;
  const auto isSeparator = [](unsigned char c) { return (c <= ' ') | (c == ',') | (c == '('); };
  unsigned char numbers = 0, others = 0;
  for (std::size_t i = 1; i + 1 < list.size(); ++i) {
    const auto before = static_cast<unsigned char>(list[i - 1]);
    const auto c = static_cast<unsigned char>(list[i]);
    numbers += static_cast<unsigned char>(isSeparator(before) & !isSeparator(c));
    others |= static_cast<unsigned char>((c == '(') | (c == ')') | ((c | 0x20) == '{') |
                                         ((c | 0x20) == '}') | (c == 0x7F));
  }
  return others == 0 && numbers <= count;
}

// The elements of a list, as many as there are room for, and how many there are.
struct Elements {
  explicit Elements(std::string_view list) {
    vsa::ListReader reader(list);
    vsa::ListPart part;
    while (reader.next(part)) {
      if (part.continues) {
        if (glued.empty()) glued = part.text;
        continue;
      }
      if (count < std::size(first)) first[count] = part.text;
      ++count;
    }
  }

  std::string_view first[17];
  std::size_t count = 0;
  std::string_view glued;  // the first characters that continue an element
};

std::string quoted(std::string_view text) {
  std::string shown =
      text.size() > 40 ? std::string(text.substr(0, 37)) + "..." : std::string(text);
  return '\'' + shown + '\'';
}

class ListRules final : public StatementRule {
 public:
  explicit ListRules(RuleFindings& found) : found_(found) {}

  void visit(const StatementView& view) override {
    if (!view.isAssignment()) return;
    const SyntaxToken& value = view.value();
    if (value.kind == SyntaxKind::Braces) checkObject(value);
    if (value.kind != SyntaxKind::Word || view.valueTokens() < 2) return;
    const SyntaxToken& list = view.token(view.statement.valueIndex + view.valueTokens() - 1);
    checkEmptyCommas(list);
    if (list.kind == SyntaxKind::Parens) {
      checkTuple(value, list);
    } else {
      checkGlued(list);
    }
  }

 private:
  void checkObject(const SyntaxToken& braces) {
    const Elements elements(braces.text);
    if (elements.count == 0 || !found_.isEnabled(RuleId::ObjectForList)) return;
    Finding& finding = found_.add(RuleId::ObjectForList, braces.range,
                                  "this makes an empty object, and the numbers are lost");
    const bool isOfReals = braces.text.find('.') != std::string_view::npos;
    finding.hint = "a buffer has a type and a count, such as `" +
                   std::string(isOfReals ? "float[" : "int32[") + std::to_string(elements.count) +
                   "] {...}`";
  }

  void checkEmptyCommas(const SyntaxToken& list) {
    if (!found_.isEnabled(RuleId::EmptyComma)) return;
    std::size_t at = list.text.find(',');
    const std::size_t first = list.text.find_first_not_of(WHITE, 1);
    bool isEmpty = at == first;
    while (!isEmpty && at != std::string_view::npos) {
      const std::size_t next = list.text.find_first_not_of(WHITE, at + 1);
      isEmpty = next != std::string_view::npos && list.text[next] == ',';
      at = isEmpty ? next : list.text.find(',', at + 1);
    }
    if (!isEmpty || at == std::string_view::npos) return;
    found_
        .add(RuleId::EmptyComma, rangeIn(list, list.text.substr(at, 1)),
             "a comma without a number before it; it stands for nothing")
        .hint = "write the number that is missing, or remove the comma";
  }

  void checkTuple(const SyntaxToken& word, const SyntaxToken& list) {
    const std::size_t wanted = componentsOf(word);
    if (isPlainTuple(list.text, wanted)) return;
    const Elements elements(list.text);
    if (!elements.glued.empty()) {
      addGlued(list, elements.glued);
    } else if (wanted != 0 && elements.count > wanted) {
      checkSurplus(word, list, elements, wanted);
    }
  }

  void checkSurplus(const SyntaxToken& word, const SyntaxToken& list, const Elements& elements,
                    std::size_t wanted) {
    if (hasDecimalCommas(list.text, elements.count, wanted)) {
      addDecimalCommas(list);
      return;
    }
    if (!found_.isEnabled(RuleId::DroppedComponents) || wanted >= std::size(elements.first)) return;
    const char* const begin = elements.first[wanted].data();
    const std::size_t last = list.text.find_last_not_of(" \t\r\n\v\f,)]}");
    const char* const end = list.text.data() + last + 1;
    const std::string keyword(word.text);
    Finding& finding = found_.add(
        RuleId::DroppedComponents, rangeIn(list, {begin, static_cast<std::size_t>(end - begin)}),
        "a " + keyword + " takes " + std::to_string(wanted) + " numbers, and this list has " +
            std::to_string(elements.count) + "; the rest is dropped");
    if (wanted < 4 && elements.count == wanted + 1) {
      finding.hint = "a type for them all is `" + keyword.substr(0, keyword.size() - 1) +
                     std::to_string(elements.count) + "`";
    }
  }

  // Twice as many numbers as wanted, in pairs of digits with a comma and no blank between them.
  static bool hasDecimalCommas(std::string_view list, std::size_t count, std::size_t wanted) {
    if (count != 2 * wanted) return false;
    std::size_t commas = 0;
    for (std::size_t i = 1; i + 1 < list.size(); ++i) {
      if (list[i] != ',') continue;
      const bool isBetweenDigits = isDigit(list[i - 1]) && isDigit(list[i + 1]);
      commas += isBetweenDigits ? 1 : 0;
    }
    return commas == wanted;
  }

  void addDecimalCommas(const SyntaxToken& list) {
    if (!found_.isEnabled(RuleId::DecimalComma)) return;
    Finding& finding = found_.add(RuleId::DecimalComma, list.range,
                                  "a comma separates numbers; it is no decimal point");
    std::string corrected(list.text);
    for (std::size_t i = 1; i + 1 < corrected.size(); ++i) {
      if (corrected[i] == ',' && isDigit(corrected[i + 1])) corrected[i] = '.';
    }
    finding.hint = "write `" + corrected + "`";
    finding.edits = {{list.range.begin.offset, list.range.end.offset, corrected}};
  }

  void checkGlued(const SyntaxToken& list) {
    if (!found_.isEnabled(RuleId::GluedElements)) return;
    const char open = list.text.front();
    if (list.text.find(open, 1) == std::string_view::npos) return;
    const Elements elements(list.text);
    if (!elements.glued.empty()) addGlued(list, elements.glued);
  }

  void addGlued(const SyntaxToken& list, std::string_view part) {
    if (!found_.isEnabled(RuleId::GluedElements)) return;
    Finding& finding = found_.add(
        RuleId::GluedElements, rangeIn(list, part),
        "only brackets stand before " + quoted(part) + ", so it continues the number before");
    finding.hint = "put a blank between the brackets";
    const vsa::TextRange range = *finding.range;
    const std::size_t at = range.begin.offset - list.range.begin.offset;
    const std::size_t bracket = list.text.find_last_not_of(WHITE, at - 1);
    const std::uint64_t place = list.range.begin.offset + bracket;
    finding.edits = {{place, place, " "}};
  }

  static bool isDigit(char c) { return c >= '0' && c <= '9'; }

  RuleFindings& found_;
};

}  // namespace

StatementRulePointer listRules(const RuleInput&, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::ObjectForList, RuleId::EmptyComma, RuleId::DroppedComponents,
                           RuleId::DecimalComma, RuleId::GluedElements})) {
    return nullptr;
  }
  return std::make_unique<ListRules>(found);
}

}  // namespace vsa_tools
