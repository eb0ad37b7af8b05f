// Rules about lists of numbers that the reader reads in another way than they look.
#include <cstdint>
#include <string>

#include "tools/vsa/check/rules/walk/statement_rule.h"
#include "tools/vsa/check/rules/walk/text_walk.h"
#include "tools/vsa/check/text/decimal_commas.h"

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;

constexpr std::string_view WHITE_SPACE = " \t\r\n\v\f";

// Packs four characters into one number. Upper-case letters count as lower-case letters, because
// the bit 0x20 is set in each character. This makes no other character of a name equal to a letter
// or digit.
constexpr std::uint32_t foldedWord(std::string_view word) {
  std::uint32_t folded = 0;
  for (const char c : word) folded = folded << 8 | (static_cast<unsigned char>(c) | 0x20U);
  return folded;
}

// Returns the number of components of the tuple type `word`, or 0 if it is not such a type.
std::size_t componentsOf(std::string_view word) {
  constexpr std::size_t KEYWORD_BYTES = 4;
  if (word.size() != KEYWORD_BYTES) return 0;
  switch (foldedWord(word.substr(0, KEYWORD_BYTES))) {
    case foldedWord("vec2"):
    case foldedWord("pos2"):
      return 2;
    case foldedWord("vec3"):
    case foldedWord("pos3"):
      return 3;
    case foldedWord("vec4"):
    case foldedWord("quat"):
    case foldedWord("rgba"):
      return 4;
    case foldedWord("mat3"):
      return 9;
    case foldedWord("mat4"):
      return 16;
    default:
      return 0;
  }
}

// The first elements of a list, as many as the array can store, and the number of all elements.
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
  std::string_view glued;  // the first characters that continue an element without a blank
};

std::string inApostrophes(std::string_view text) {
  std::string shown =
      text.size() > 40 ? std::string(text.substr(0, 37)) + "..." : std::string(text);
  return '\'' + shown + '\'';
}

std::string articleOf(std::string_view keyword) {
  return foldedWord(keyword.substr(0, 1)) == foldedWord("r") ? "an " : "a ";
}

// Returns the keyword of the same family for `count` numbers, such as "vec4" for "vec3" and 4, or
// an empty text if there is none.
std::string largerTuple(const std::string& keyword, std::size_t count) {
  const std::string family = keyword.substr(0, keyword.size() - 1);
  const std::string larger = family + (componentsOf(keyword) == 9 ? "4" : std::to_string(count));
  return componentsOf(larger) == count ? larger : std::string();
}

class ListRules final : public StatementRule {
 public:
  explicit ListRules(RuleFindings& found) : StatementRule(TUPLE | BUFFER | OBJECT), found_(found) {}

  void visit(const StatementView& view) override {
    const vsa::StatementOutline& statement = view.statement;
    if (statement.valueKind == SyntaxKind::Braces) checkObject(statement.value);
    if (statement.list.empty()) return;
    const bool isPlain = statement.plainElements != 0;
    if (!isPlain) checkEmptyCommas(statement.list);
    if (statement.brackets.empty()) {
      checkTuple(statement);
    } else if (!isPlain) {
      checkGlued(statement.list);
    }
  }

 private:
  void checkObject(std::string_view braces) {
    const Elements elements(braces);
    if (elements.count == 0 || !found_.isEnabled(RuleId::ObjectForList)) return;
    Finding& finding = found_.add(RuleId::ObjectForList, found_.rangeOf(braces),
                                  "this makes an empty object, and the numbers are lost");
    const bool isOfReals = braces.find('.') != std::string_view::npos;
    finding.hint = "a buffer has a type and a count, such as `" +
                   std::string(isOfReals ? "float[" : "int32[") + std::to_string(elements.count) +
                   "] {...}`";
  }

  void checkEmptyCommas(std::string_view list) {
    if (!found_.isEnabled(RuleId::EmptyComma)) return;
    std::size_t at = list.find(',');
    const std::size_t first = list.find_first_not_of(WHITE_SPACE, 1);
    bool isEmpty = at == first;
    while (!isEmpty && at != std::string_view::npos) {
      const std::size_t next = list.find_first_not_of(WHITE_SPACE, at + 1);
      isEmpty = next != std::string_view::npos && list[next] == ',';
      at = isEmpty ? next : list.find(',', at + 1);
    }
    if (!isEmpty || at == std::string_view::npos) return;
    found_
        .add(RuleId::EmptyComma, found_.rangeOf(list.substr(at, 1)),
             "a comma without a number before it; it stands for nothing")
        .hint = "write the number that is missing, or remove the comma";
  }

  void checkTuple(const vsa::StatementOutline& statement) {
    constexpr std::size_t MIN_COMPONENTS = 2;
    const std::size_t plain = statement.plainElements;
    if (plain != 0 && plain <= MIN_COMPONENTS) return;
    const std::size_t wanted = componentsOf(statement.word);
    if (plain != 0 && plain <= wanted) return;
    const Elements elements(statement.list);
    if (!elements.glued.empty()) {
      addGlued(statement.list, elements.glued);
    } else if (wanted != 0 && elements.count > wanted) {
      checkSurplus(statement.word, statement.list, elements, wanted);
    }
  }

  void checkSurplus(std::string_view word, std::string_view list, const Elements& elements,
                    std::size_t wanted) {
    if (elements.count == 2 * wanted && hasDecimalCommas(list, elements.count)) {
      addDecimalCommas(list);
      return;
    }
    if (!found_.isEnabled(RuleId::DroppedComponents) || wanted >= std::size(elements.first)) return;
    const char* const begin = elements.first[wanted].data();
    const std::size_t last = list.find_last_not_of(" \t\r\n\v\f,)]}");
    const char* const end = list.data() + last + 1;
    const std::string keyword(word);
    Finding& finding = found_.add(RuleId::DroppedComponents,
                                  found_.rangeOf({begin, static_cast<std::size_t>(end - begin)}),
                                  articleOf(keyword) + keyword + " takes " +
                                      std::to_string(wanted) + " numbers, and this list has " +
                                      std::to_string(elements.count) + "; the rest is dropped");
    const std::string larger = largerTuple(keyword, elements.count);
    finding.hint = larger.empty() ? "remove the numbers that are too many"
                                  : "a type for them all is `" + larger + '`';
  }

  void addDecimalCommas(std::string_view list) {
    if (!found_.isEnabled(RuleId::DecimalComma)) return;
    const vsa::TextRange range = found_.rangeOf(list);
    Finding& finding = found_.add(RuleId::DecimalComma, range,
                                  "a comma separates numbers; it is no decimal point");
    const std::string corrected = withDecimalPoints(list);
    finding.hint = "write `" + corrected + "`";
    finding.edits = {{range.begin.offset, range.end.offset, corrected}};
  }

  void checkGlued(std::string_view list) {
    if (!found_.isEnabled(RuleId::GluedElements)) return;
    const char open = list.front();
    if (list.find(open, 1) == std::string_view::npos) return;
    const Elements elements(list);
    if (!elements.glued.empty()) addGlued(list, elements.glued);
  }

  void addGlued(std::string_view list, std::string_view part) {
    if (!found_.isEnabled(RuleId::GluedElements)) return;
    Finding& finding = found_.add(RuleId::GluedElements, found_.rangeOf(part),
                                  "only brackets stand before " + inApostrophes(part) +
                                      ", so it continues the number before");
    finding.hint = "put a blank between the brackets";
    const auto at = static_cast<std::size_t>(part.data() - list.data());
    const std::size_t bracket = list.find_last_not_of(WHITE_SPACE, at - 1);
    const std::uint64_t place = finding.range->begin.offset - (at - bracket);
    finding.edits = {{place, place, " "}};
  }

  RuleFindings& found_;
};

}  // namespace

StatementRulePointer listRules(const TextRuleInput&, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::ObjectForList, RuleId::EmptyComma, RuleId::DroppedComponents,
                           RuleId::DecimalComma, RuleId::GluedElements})) {
    return nullptr;
  }
  return std::make_unique<ListRules>(found);
}

}  // namespace vsa_tools
