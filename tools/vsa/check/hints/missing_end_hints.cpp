// Hints for complete values that no semicolon follows.
#include <algorithm>
#include <string>

#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/text/decimal_commas.h"
#include "tools/vsa/check/text/digits.h"
#include "tools/vsa/check/text/statement_scan.h"

namespace vsa_tools {

namespace {

/// A word that users write instead of a keyword.
struct KeywordAlias {
  std::string_view written;
  std::string_view keyword;
};

// Names of types that users know from elsewhere, and the keywords of this format to write instead:
// for buffers the element types, for tuples the tuple types.
constexpr KeywordAlias BUFFER_ALIASES[] = {
    {"uint8", "byte"},    {"uchar", "byte"},     {"int8", "char"},   {"short", "int16"},
    {"int", "int32"},     {"uint", "uint32"},    {"long", "int64"},  {"bool", "byte"},
    {"float32", "float"}, {"float64", "double"}, {"real", "double"}, {"vec2", "vec2f"},
    {"vec3", "vec3f"},    {"vec4", "vec4f"},     {"pos2", "pos2f"},  {"pos3", "pos3f"},
    {"quat", "quatf"},    {"mat3", "mat3f"},     {"mat4", "mat4f"},  {"rgba", "rgbaf"},
    {"rgb", "rgbf"},      {"point", "pos3f"},    {"normal", "vec3f"}};
constexpr KeywordAlias TUPLE_ALIASES[] = {
    {"rgb", "rgba"},   {"color", "rgba"},    {"colour", "rgba"},    {"vector", "vec3"},
    {"point", "pos3"}, {"position", "pos3"}, {"vec2f", "vec2"},     {"vec3f", "vec3"},
    {"vec4f", "vec4"}, {"vec2d", "vec2"},    {"vec3d", "vec3"},     {"vec4d", "vec4"},
    {"pos3f", "pos3"}, {"quatf", "quat"},    {"mat3f", "mat3"},     {"mat4f", "mat4"},
    {"rgbaf", "rgba"}, {"matrix", "mat4"},   {"quaternion", "quat"}};
constexpr std::string_view TUPLE_KEYWORDS[] = {"vec2", "vec3", "vec4", "pos2", "pos3",
                                               "quat", "mat3", "mat4", "rgba"};

constexpr const char* LIST_FORMS = "a tuple is `vec3(x y z)`, and a buffer `float[2] {x y}`";

template <std::size_t N>
std::optional<std::string> aliasOf(const KeywordAlias (&aliases)[N], std::string_view word) {
  for (const KeywordAlias& alias : aliases) {
    if (alias.written == word) return std::string(alias.keyword);
  }
  return std::nullopt;
}

std::optional<Suggestion> nearestKeyword(std::string_view word, bool isBuffer) {
  NearestName nearest(word);
  for (const std::string_view tuple : TUPLE_KEYWORDS) {
    if (!isBuffer) nearest.consider(tuple);
  }
  for (int i = 0; isBuffer && i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<vsa::ElementType>(i);
    if (zn::korvo_sdk::isBufferElement(type)) nearest.consider(loweredName(vsa::typeName(type)));
  }
  return nearest.found();
}

// Adds a hint for a word before a list if the word is no keyword of such a list, for example
// because it is the name of a type in other languages.
void hintForUnknownKeyword(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string word = loweredName(text.bytesOf(range));
  const std::uint64_t open = text.beginBehind(range.end.offset);
  const bool isBuffer = text.at(open) == '[';
  const std::size_t close = text.text().find(']', open);
  const bool hasList =
      close != std::string_view::npos && text.at(text.beginBehind(close + 1)) == '{';
  if (isBuffer && !hasList && text.declarationOf(text.bytesOf(range))) {
    finding.hint = "a reference is the name of a node, without an index";
    return;
  }
  if (const auto alias = isBuffer ? aliasOf(BUFFER_ALIASES, word) : aliasOf(TUPLE_ALIASES, word)) {
    replace(finding, range, *alias);
  } else if (!suggest(finding, range, nearestKeyword(word, isBuffer))) {
    finding.hint = isBuffer ? "an element type is `int32`, `float`, `vec3f` or another of them"
                            : "a tuple type is `vec3`, `pos3`, `rgba` or another of them";
  }
}

// Adds a hint for a period after a value. In "= node.output", a connection is meant.
void hintForPeriod(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view node = nameBefore(text.text(), range.begin.offset);
  if (node.empty() || !text.declarationOf(node)) {
    finding.hint = "a value ends here; only a connection has a period in it: `|= node.output`";
    return;
  }
  finding.hint = "a connection to an output is written with `|=`";
  const std::uint64_t equals =
      text.endBefore(static_cast<std::uint64_t>(node.data() - text.text().data()));
  if (equals > 0 && text.at(equals - 1) == '=') insertAt(finding, equals - 1, "|");
}

// Whether only white space follows the byte at `at` in its line, and a statement may begin in a
// later line.
bool isLastOfLine(HintText& text, std::uint64_t at) {
  const std::uint64_t next = text.beginBehind(at + 1);
  const std::string_view between = text.text().substr(at + 1, next - at - 1);
  const bool isStatement = text.at(next) == '.' || isWordText(text.text().substr(next, 1));
  return between.find('\n') != std::string_view::npos && isStatement;
}

// Adds a hint for a `=` after the source of a connection. If the last period before the `=` begins
// a line, as in "|= dusk.out" and ".power = 1;" in two lines, the first line has no semicolon. The
// reader takes the two paths for one.
void hintForPathInSource(HintText& text, const vsa::TextRange& equals, Finding& finding) {
  std::uint64_t begin = text.endBefore(equals.begin.offset);
  while (begin > 0 && isWordText('_' + std::string(1, text.at(begin - 1)))) --begin;
  if (begin == 0 || text.at(begin - 1) != '.') return;
  const std::uint64_t end = text.endBefore(begin - 1);
  const std::string_view between = text.text().substr(end, begin - 1 - end);
  if (between.find('\n') == std::string_view::npos) return;
  finding.range = text.rangeOf(text.text().substr(end, 0));
  finding.hint = "end the statement with `;`";
  insertAt(finding, end, ";");
}

// Adds a hint for an apostrophe between digits, as in "1'000".
bool hintForApostrophes(HintText& text, std::uint64_t at, Finding& finding) {
  const bool isGrouped =
      text.at(at) == '\'' && at > 0 && isDigit(text.at(at - 1)) && isDigit(text.at(at + 1));
  if (!isGrouped) return false;
  finding.hint = "a number has no separators between its digits";
  return true;
}

// Whether a quote is before the word at `at`, and another one after it in the same line.
bool isBetweenQuotes(HintText& text, std::uint64_t at) {
  const std::uint64_t end = text.endBefore(at);
  const std::size_t next = text.text().find_first_of("\"\n", at);
  return end > 0 && text.at(end - 1) == '"' && text.at(next) == '"';
}

// Adds a hint for a string without its first quote, such as `red"`.
bool hintForMissingQuote(HintText& text, std::uint64_t at, Finding& finding) {
  const std::string_view word = nameBefore(text.text().substr(0, at), at);
  const auto begin = static_cast<std::uint64_t>(word.data() - text.text().data());
  const bool isJoined = text.at(at) == '"' && !word.empty() && begin + word.size() == at;
  const std::uint64_t equals = text.endBefore(begin);
  if (!isJoined || equals == 0 || text.at(equals - 1) != '=') return false;
  finding.range = text.rangeOf(text.text().substr(at, 1));
  finding.hint = "a string begins with `\"`, too: write `\"" + std::string(word) + "\"`";
  insertAt(finding, begin, "\"");
  return true;
}

// Whether a number is directly before `at` or before the blanks there. The digits of a word such as
// "vec3" are no number.
bool isBehindNumber(HintText& text, std::uint64_t at) {
  const std::string_view before = text.text().substr(0, text.endBefore(at));
  const std::string_view word = nameBefore(before, before.size());
  return !word.empty() && isDigit(word.front());
}

// Returns whether the number before `end` is a single 0. A minus sign does not matter.
bool isZero(HintText& text, std::uint64_t end) {
  const std::string_view before = text.text().substr(0, end);
  const std::size_t begin = before.find_last_not_of("0123456789.eE+-") + 1;
  return before.substr(begin) == "0" || before.substr(begin) == "-0";
}

// Adds a hint for numbers such as "1_000" and "0x1F". The reader ends the number after its first
// digits and reads the remaining characters as a word.
bool hintForDigits(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view word = text.bytesOf(range);
  const std::uint64_t at = range.begin.offset;
  if (at == 0 || !isDigit(text.at(at - 1))) return false;
  const bool isGrouped =
      word.front() == '_' && word.find_first_not_of("_0123456789") == std::string_view::npos;
  if (isGrouped) {
    std::string digits(word);
    std::erase(digits, '_');
    finding.hint = "a number has no separators between its digits";
    finding.edits = {{at, range.end.offset, digits}};
    return true;
  }
  const bool isHexadecimal = (word.front() == 'x' || word.front() == 'X') && isZero(text, at);
  const auto decimal = isHexadecimal ? decimalOfHexadecimal(word.substr(1)) : std::nullopt;
  if (!decimal) return false;
  finding.hint = "there are no hexadecimal numbers: write `" + *decimal + '`';
  finding.edits = {{at - 1, range.end.offset, *decimal}};
  return true;
}

}  // namespace

// Adds a hint for a buffer without a list, such as "float[2];". Returns false if the diagnostic is
// about something else.
bool hintForMissingList(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const std::uint64_t end = text.endBefore(diagnostic.range.begin.offset);
  const bool isAfterCount =
      diagnostic.argument("found").starts_with('[') && end > 0 && text.at(end - 1) == ']';
  if (!isAfterCount) return false;
  finding.hint = "after the count, a buffer has a list in braces, such as `float[2] {x y}`";
  const std::string_view between = text.text().substr(end, diagnostic.range.begin.offset - end);
  if (between.find('\n') != std::string_view::npos) {
    finding.range = text.rangeOf(text.text().substr(end, 0));
  }
  return true;
}

void hintForMissingEnd(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const vsa::TextRange& range = diagnostic.range;
  const std::string_view source = text.bytesOf(range);
  const std::uint64_t at = range.begin.offset;
  const char next = text.at(text.beginBehind(range.end.offset));
  if (hintForMissingList(text, diagnostic, finding)) return;
  if (diagnostic.argument("found").starts_with("#IN")) {
    finding.hint = "a value that is not finite is written `-inf` or `-nan`";
  } else if (source.empty()) {
    finding.hint = "end the statement with `;`";
    insertAt(finding, at, ";");
  } else if (isDecimalComma(text.text(), at)) {
    finding.hint = "a comma is a blank, not a decimal point: write a point";
    finding.edits = {{at, at + 1, "."}};
  } else if (source.front() == ',' && isLastOfLine(text, at)) {
    replace(finding, range, ";");
  } else if (source.front() == ',') {
    finding.hint = "a value is a single number; several are a list, such as `vec2(1 2)`";
  } else if (hintForApostrophes(text, at, finding) || hintForMissingQuote(text, at, finding)) {
    return;
  } else if (isOpening(source)) {
    hintForUnclosed(text, range, finding);
  } else if (source.front() == '"') {
    finding.hint = "a value is one string; a quote inside it is written `\\\"`";
  } else if (source.front() == '.') {
    hintForPeriod(text, range, finding);
  } else if (isWordText(source) && (next == '[' || next == '(')) {
    hintForUnknownKeyword(text, range, finding);
  } else if (source.front() == '=') {
    hintForPathInSource(text, range, finding);
  } else if (std::string_view("+-*/").find(source.front()) != std::string_view::npos) {
    finding.hint = "a value is a single number; nothing is computed";
  } else if (source.front() == ':') {
    finding.hint = "end the statement with `;`";
    finding.edits = {{at, at + 1, ";"}};
  } else if (isWordText(source) && isBetweenQuotes(text, at)) {
    finding.hint = "a quote inside a string is written `\\\"`";
  } else if (isDigit(source.front())) {
    finding.hint = isBehindNumber(text, at)
                       ? "a value is a single number; several are a list, such as `vec2(1 2)`"
                       : LIST_FORMS;
  } else if (isWordText(source) && !hintForDigits(text, range, finding)) {
    finding.hint = "a value ends here; a number has no unit, and a text needs quotes";
  } else if (source.front() == '(' || source.front() == '[' || source.front() == '{') {
    finding.hint = LIST_FORMS;
  }
}

}  // namespace vsa_tools
