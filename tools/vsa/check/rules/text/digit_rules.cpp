// The rule about numbers that lose digits when they are stored.
#include <array>
#include <charconv>
#include <cstdint>
#include <string>

#include <vsa/foundation/char_class.h>
#include "tools/vsa/check/rules/walk/statement_rule.h"
#include "tools/vsa/check/rules/walk/text_walk.h"
#include "tools/vsa/check/text/digit_runs.h"
#include "tools/vsa/check/text/digits.h"

namespace vsa_tools {

namespace {

using vsa::ElementType;
using vsa::SyntaxKind;

// Numbers with at most this many digits are not checked. 9 significant digits are enough to
// identify every float, and a double represents every integer of 15 digits exactly.
constexpr std::size_t FLOAT_DIGITS = 9;
constexpr std::size_t INTEGER_DIGITS = 15;

// Returns the number of significant digits in a number, without its exponent.
std::size_t significantDigits(std::string_view number) {
  std::size_t digits = 0;
  for (const char c : number) {
    if (c == 'e' || c == 'E') break;
    if ((c >= '1' && c <= '9') || (c == '0' && digits > 0)) ++digits;
  }
  return digits;
}

template <class Number>
bool parses(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

// Whether the text is too short to have more than FLOAT_DIGITS significant digits. Leading zeros
// are not significant.
bool isShortFloat(std::string_view text) {
  std::size_t zeros = 0;
  while (zeros < text.size() && (text[zeros] == '0' || !isDigit(text[zeros]))) ++zeros;
  return text.size() - zeros <= FLOAT_DIGITS;
}

// Whether the number is probably compressed data, which another rule reports.
bool isCompressed(std::string_view list, std::string_view number) {
  constexpr std::size_t MIN_DIGITS = 20;
  const bool isFirst = list.find_first_not_of("{ \t\r\n\v\f") ==
                       static_cast<std::size_t>(number.data() - list.data());
  return isFirst && number.starts_with('.') && number.size() > MIN_DIGITS;
}

// Whether the text has more significant digits than a float keeps. Exception: false if the text is
// the exact value of a float written in full.
bool losesFloatDigits(std::string_view text) {
  double exact = 0;
  return !isShortFloat(text) && significantDigits(text) > FLOAT_DIGITS && parses(text, exact) &&
         static_cast<double>(static_cast<float>(exact)) != exact;
}

// Returns whether the text is an integer that no double represents exactly.
bool losesIntegerDigits(std::string_view text) {
  std::int64_t integer = 0;
  if (text.size() <= INTEGER_DIGITS || !parses(text, integer)) return false;
  constexpr double TOO_LARGE = 9223372036854775808.0;
  const auto stored = static_cast<double>(integer);
  return stored >= TOO_LARGE || static_cast<std::int64_t>(stored) != integer;
}

bool isOfNumber(char c) {
  return zn::char_class::is(c, zn::char_class::NUMBER);
}

// The number in a list that has the byte at `at`.
std::string_view numberAt(std::string_view list, std::size_t at) {
  std::size_t begin = at, end = at;
  while (isOfNumber(list[begin - 1])) --begin;
  while (isOfNumber(list[end])) ++end;
  return list.substr(begin, end - begin);
}

// Whether a run of digits and points has more than `count` digits.
bool hasMoreDigits(std::string_view run, std::size_t count) {
  return run.size() > count + 1 ||
         (run.size() == count + 1 && run.find('.') == std::string_view::npos);
}

// Whether `isLost` is true for a number with a run of more than `digits` digits. If points do not
// belong to runs, a run after a point is left out. Inspects one byte and then skips `digits` bytes,
// again and again. The skipped bytes are too few for a whole such run, so none is missed. This
// takes a fifth of the time that splitting the list takes.
template <std::size_t digits, Points points, class IsLost>
bool hasLost(std::string_view list, const IsLost& isLost) {
  if (!mayHaveLongRun<digits, points>(list)) return false;
  const auto isOfRun = [](char c) { return isDigit(c) || (points == Points::Allowed && c == '.'); };
  for (std::size_t at = digits + 1; at < list.size(); at += digits + 1) {
    if (!isOfRun(list[at])) continue;
    std::size_t begin = at;
    while (isOfRun(list[begin - 1])) --begin;
    while (isOfRun(list[at])) ++at;
    const bool isFraction = list[begin - 1] == '.';
    if (isFraction || !hasMoreDigits(list.substr(begin, at - begin), digits)) continue;
    if (isLost(numberAt(list, begin))) return true;
  }
  return false;
}

template <class Number>
std::string shown(std::string_view text) {
  Number stored = 0;
  std::from_chars(text.data(), text.data() + text.size(), stored);
  std::array<char, 32> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), stored);
  return std::string(digits.data(), end);
}

class DigitRules final : public StatementRule {
 public:
  DigitRules(const TextRuleInput& input, RuleFindings& found)
      : StatementRule(TUPLE | BUFFER | INTEGER), input_(input), found_(found) {}

  void visit(const StatementView& view) override {
    const vsa::StatementOutline& statement = view.statement;
    if (statement.valueKind == SyntaxKind::Integer) checkInteger(view);
    if (statement.list.empty()) return;
    if (statement.brackets.empty()) {
      checkDoubles(statement.list);
      return;
    }
    const ElementType component = zn::korvo_sdk::componentType(elementTypeOf(statement.word));
    if (component == ElementType::Float) checkFloats(statement.word, statement.list);
    if (component == ElementType::Double) checkDoubles(statement.list);
  }

 private:
  // The first number of a list for which `isLost` is true.
  template <class IsLost>
  static std::string_view firstLost(std::string_view list, const IsLost& isLost) {
    vsa::ListReader reader(list);
    vsa::ListPart part;
    while (reader.next(part)) {
      if (!part.continues && isLost(part.text)) return part.text;
    }
    return {};
  }

  void checkFloats(std::string_view keyword, std::string_view list) {
    if (!hasLost<FLOAT_DIGITS, Points::Allowed>(list, losesFloatDigits)) return;
    const std::string_view number = firstLost(list, losesFloatDigits);
    if (number.empty() || isCompressed(list, number)) return;
    // The keyword for elements of several floats ends in "f". The keyword for elements of as many
    // doubles ends in "d" instead.
    std::string wider(keyword);
    wider.back() = 'd';
    if (isWord(keyword, "float")) wider = "double";
    found_
        .add(RuleId::LostDigits, found_.rangeOf(number),
             "a float keeps 9 digits; this is stored as " + shown<float>(number))
        .hint = "`" + wider + "` keeps the digits";
  }

  void checkDoubles(std::string_view list) {
    if (!hasLost<INTEGER_DIGITS, Points::None>(list, losesIntegerDigits)) return;
    const std::string_view number = firstLost(list, losesIntegerDigits);
    if (!number.empty()) addInteger(number);
  }

  // Checks an integer. It loses digits only if its input is a Real, because an Int keeps all
  // digits. Members of objects and elements of arrays are not checked.
  void checkInteger(const StatementView& view) {
    const vsa::StatementOutline& statement = view.statement;
    if (statement.word.size() <= INTEGER_DIGITS || !statement.isPlainPath) return;
    const vsa::InputView input = input_.scene()[view.node()][statement.path];
    if (input.type() != vsa::ValueType::Real || !losesIntegerDigits(statement.word)) return;
    addInteger(statement.word);
  }

  void addInteger(std::string_view number) {
    found_
        .add(RuleId::LostDigits, found_.rangeOf(number),
             "a real number keeps 15 digits; this is stored as " + shown<double>(number))
        .hint = "an Int and a buffer of `int64` keep the digits";
  }

  const TextRuleInput& input_;
  RuleFindings& found_;
};

}  // namespace

StatementRulePointer digitRules(const TextRuleInput& input, RuleFindings& found) {
  if (!found.isEnabled(RuleId::LostDigits)) return nullptr;
  return std::make_unique<DigitRules>(input, found);
}

}  // namespace vsa_tools
