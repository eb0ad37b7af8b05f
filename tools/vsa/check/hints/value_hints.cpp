// Hints for right-hand sides that are no value: misspelt numbers, numbers out of range, tuples with
// a wrong count, and other text.
#include <algorithm>
#include <charconv>
#include <string>

#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/text/digits.h"

namespace vsa_tools {

namespace {

// Returns the number of bytes of the real number at the beginning of a text, or 0 if there is none
// or it is too large or too small for a double. The conversion does not depend on the locale.
std::size_t lengthOfReal(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() ? static_cast<std::size_t>(end - text.data()) : 0;
}

// Adds ".0" before the exponent of a number without a decimal point, which makes the number a real:
// "1e-05" becomes "1.0e-05". Returns nothing for any other number.
std::optional<std::string> withPoint(std::string_view number) {
  const std::size_t exponent = number.find_first_of("eE");
  if (exponent == std::string_view::npos || exponent == 0) return std::nullopt;
  if (number.find('.') != std::string_view::npos) return std::nullopt;
  if (!isDigit(number[exponent - 1]) || exponent + 1 == number.size()) return std::nullopt;
  const std::string real =
      std::string(number.substr(0, exponent)) + ".0" + std::string(number.substr(exponent));
  return lengthOfReal(real) == real.size() ? std::optional(real) : std::nullopt;
}

void hintForNumber(const vsa::TextRange& range, std::string_view number, Finding& finding) {
  const std::string_view digits = number.front() == '-' ? number.substr(1) : number;
  const bool isInteger =
      digits.find_first_not_of("0123456789") == std::string_view::npos && !digits.empty();
  const bool isUnsigned = digits.size() > 1 && digits.ends_with('u') &&
                          digits.find_first_not_of("0123456789") == digits.size() - 1;
  if (isInteger) {
    finding.hint =
        "an integer has 64 bits; for a real number write `" + std::string(number) + ".0`";
  } else if (isUnsigned) {
    finding.hint = "the number does not fit 63 bits; the largest unsigned number is `-1u`";
  } else if (number.ends_with('U') && isDigit(number[number.size() - 2])) {
    std::string lower(number);
    lower.back() = 'u';
    replace(finding, range, lower);
  } else if (const auto real = withPoint(number)) {
    replace(finding, range, *real);
  } else if (number.front() == '-' || isDigit(number.front())) {
    finding.hint = "this is not a number; a text needs quotes";
  } else {
    finding.hint = "a number begins with a digit; a text needs quotes";
  }
}

// Adds a hint for a period at the beginning of a value. If a number follows, such as ".5", an edit
// puts a 0 before it.
void hintForLeadingPeriod(HintText& text, std::uint64_t at, Finding& finding) {
  constexpr std::size_t MAX_DIGITS = 64;
  finding.hint = "a number begins with a digit";
  const std::string real = '0' + std::string(text.text().substr(at, MAX_DIGITS));
  const std::size_t size = lengthOfReal(real);
  const std::uint64_t end = at + size - 1;
  const bool isWhole = size > 2 && size < MAX_DIGITS && text.at(end) != '.' &&
                       !isDigit(text.at(end)) && !isWordText(text.text().substr(end, 1));
  if (!isWhole) return;
  finding.hint += ": write `" + real.substr(0, size) + '`';
  finding.range = text.rangeOf(text.text().substr(at, size - 1));
  insertAt(finding, at, "0");
}

// Adds a hint for a list in parentheses without a keyword, such as "(0 1 2)".
void hintForBareList(std::string_view list, Finding& finding) {
  vsa::ListReader reader(list);
  vsa::ListPart part;
  std::size_t count = 0;
  while (reader.next(part)) ++count;
  const std::string keyword =
      count >= 2 && count <= 4 ? "vec" + std::to_string(count) : std::string("vec3");
  finding.hint = "a list in parentheses needs its type, such as `" + keyword + "(...)`";
}

// Adds a hint for an apostrophe. If a text on one line is quoted with apostrophes, such as 'noon',
// an edit replaces them by double quotes. There is no edit if the text has characters to escape.
void hintForApostrophe(HintText& text, const vsa::TextRange& range, Finding& finding) {
  finding.hint = "a string has double quotes";
  const std::uint64_t begin = range.begin.offset;
  const std::size_t end = text.text().find_first_of("'\"\\\n", begin + 1);
  if (end == std::string_view::npos || text.at(end) != '\'') return;
  finding.edits = {{begin, begin + 1, "\""}, {end, end + 1, "\""}};
}

struct TupleForm {
  std::string_view keyword;
  std::size_t components;
};

constexpr TupleForm TUPLES[] = {{"vec2", 2}, {"vec3", 3}, {"vec4", 4}, {"pos2", 2}, {"pos3", 3},
                                {"quat", 4}, {"rgba", 4}, {"mat3", 9}, {"mat4", 16}};

// Returns the row of TUPLES whose keyword is before the list, or null if there is none.
const TupleForm* tupleBefore(HintText& text, std::uint64_t list) {
  const std::uint64_t end = text.endBefore(list);
  if (end < 4) return nullptr;
  const std::string keyword = loweredName(text.text().substr(end - 4, 4));
  const auto* form = std::find_if(std::begin(TUPLES), std::end(TUPLES),
                                  [&](const TupleForm& one) { return one.keyword == keyword; });
  return form == std::end(TUPLES) ? nullptr : form;
}

void hintForTuple(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const TupleForm* const form = tupleBefore(text, range.begin.offset);
  const std::string_view list = text.bytesOf(range);
  if (form == nullptr) return hintForBareList(list, finding);
  vsa::ListReader reader(list);
  vsa::ListPart part;
  std::size_t count = 0;
  std::size_t glued = 0;
  while (reader.next(part)) ++(part.continues ? glued : count);
  if (count + glued == form->components && glued != 0) {
    std::string apart(list);
    for (std::size_t at = apart.find(")("); at != std::string::npos; at = apart.find(")(", at)) {
      apart.insert(at + 1, " ");
    }
    finding.hint = "groups with nothing between them run together: put blanks between them";
    finding.edits = {{range.begin.offset, range.end.offset, apart}};
    return;
  }
  const std::string keyword(form->keyword);
  finding.hint = "a " + keyword + " takes " + std::to_string(form->components) +
                 " numbers, and this list has " + std::to_string(count);
  if (keyword == "rgba") finding.hint = "an rgba takes 3 or 4 numbers";
  const auto* const other =
      std::find_if(std::begin(TUPLES), std::end(TUPLES), [&](const TupleForm& one) {
        return one.keyword.starts_with(keyword.substr(0, 3)) && one.components == count;
      });
  if (other != std::end(TUPLES)) {
    finding.hint += "; for them write `" + std::string(other->keyword) + '`';
  }
}

// Adds a hint for "=|".
void hintForSwappedPipe(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::uint64_t equals = text.endBefore(range.begin.offset);
  finding.hint = "a connection is written with `|=`";
  if (equals == 0 || text.at(equals - 1) != '=') return;
  finding.edits = {{equals - 1, range.end.offset, "|="}};
}

}  // namespace

void hintForValue(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const vsa::TextRange& range = diagnostic.range;
  const std::string_view source = text.bytesOf(range);
  const std::uint64_t at = range.begin.offset;
  if (source.empty()) {
    finding.hint = "the text ends inside a statement; it may have been cut off";
    return;
  }
  if (isOpening(source)) return hintForUnclosed(text, range, finding);
  switch (source.front()) {
    case '#':
      finding.hint = "a comment stands between statements: move it behind the semicolon";
      return;
    case '\'':
      return hintForApostrophe(text, range, finding);
    case ';':
      finding.hint = "a value is missing";
      return;
    case '.':
      return hintForLeadingPeriod(text, at, finding);
    case '=':
      finding.hint = "write one `=`";
      finding.edits = {{at, range.end.offset, ""}};
      return;
    case '+':
      finding.hint = "a number has no plus sign";
      if (isDigit(text.at(at + 1))) finding.edits = {{at, at + 1, ""}};
      return;
    case '|':
      return hintForSwappedPipe(text, range, finding);
    case '(':
      return hintForTuple(text, range, finding);
    default:
      return hintForNumber(range, source, finding);
  }
}

}  // namespace vsa_tools
