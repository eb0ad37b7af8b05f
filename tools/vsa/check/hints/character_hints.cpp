// Hints for invalid characters, for words in lists, and for strings and lists without an end.
#include <algorithm>
#include <string>

#include <vsa/foundation/char_class.h>
#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/text/statement_scan.h"

namespace vsa_tools {

namespace {

// Returns the hint for an invalid character. There is a hint of its own for each character that
// people often write by mistake, and one common hint for all others.
const char* hintForInvalid(char character, bool isBehindDigit, bool isArrow) {
  if (character == '%' && isBehindDigit) {
    return "a number has no unit; write the number alone, or quote it";
  }
  switch (character) {
    case '}':
      return "nothing is open here; nodes have no braces, and end where the next one begins";
    case ')':
    case ']':
      return "nothing is open here; remove the bracket";
    case '<':
    case '>':
      if (isArrow) return "a connection is written with `|=`";
      if (character == '>') break;
      return "this may be another format; a text begins with a comment or a declaration";
    case '%':
    case '$':
    case '@':
    case '&':
      return "a name has letters, digits and `_` only; other text needs quotes";
    default:
      break;
  }
  return "remove the character, or quote the text that it belongs to";
}

// Adds a hint for an arrow in an input path, such as "sun->power = 1;".
bool hintForArrowInPath(HintText& text, std::uint64_t at, Finding& finding) {
  const std::string_view all = text.text();
  if (at < 2 || all.substr(at - 1, 2) != "->" || nameBefore(all, at - 1).empty()) return false;
  const std::uint64_t end = endOfName(all, at + 1);
  const char next = text.at(text.beginBehind(end));
  if (end == at + 1 || (next != '=' && next != '|')) return false;
  finding.range = text.rangeOf(all.substr(at - 1, 2));
  finding.hint = "a path has periods between its names";
  finding.edits = {{at - 1, at + 1, "."}};
  return true;
}

// Adds a hint for "1.#INF" and the like, as some C libraries print values that are not finite.
bool hintForPrintedInfinity(HintText& text, std::uint64_t at, Finding& finding) {
  const std::string_view before = text.text().substr(0, at);
  const std::size_t begin = before.find_last_not_of("1.-") + 1;
  const std::size_t end = text.text().find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789",
                                                        std::min(at + 1, text.text().size()));
  const std::string_view word = text.text().substr(at, end - at);
  const std::string_view number = before.substr(begin);
  const bool isInfinity = word.starts_with("#INF");
  if (!number.ends_with("1.") || (!isInfinity && !word.starts_with("#IND") &&
                                  !word.starts_with("#QNAN") && !word.starts_with("#SNAN"))) {
    return false;
  }
  const std::string sign = number.starts_with('-') ? "-" : "";
  const vsa::TextRange range = text.rangeOf(text.text().substr(begin, end - begin));
  finding.range = range;
  replace(finding, range, isInfinity ? sign + "inf" : "nan");
  return true;
}

// Returns the offset of the "[" of the list that contains the byte at `offset`. If there is no such
// list, the result is the offset of another character, or npos.
std::uint64_t bracketBefore(const HintText& text, std::uint64_t offset) {
  return text.text().find_last_of("[=;", offset);
}

// Returns whether the byte at `open` is a brace that does not open a list: it follows another
// character than "]" or "=". It is probably the brace of a block, as other languages have it.
bool isBlock(HintText& text, std::uint64_t open) {
  const std::uint64_t before = text.endBefore(open);
  if (text.at(open) != '{' || before == 0) return false;
  return text.at(before - 1) != ']' && text.at(before - 1) != '=';
}

// Whether the byte at `at` is in the brackets of a buffer, such as "float[2]". A word before
// brackets may also be an input path. It is the keyword of a buffer if it follows "=".
bool isInCount(HintText& text, std::uint64_t at) {
  const std::size_t open = text.text().find_last_of("[];", at);
  if (open == std::string_view::npos || text.at(open) != '[') return false;
  const std::string_view word = nameBefore(text.text(), open);
  if (word.empty()) return false;
  const auto begin = static_cast<std::uint64_t>(word.data() - text.text().data());
  const std::uint64_t before = text.endBefore(begin);
  return before > 0 && text.at(before - 1) == '=';
}

// Whether the word begins with a period and is the whole content of a list in braces. Compressed
// data is written in this way.
bool isCompressed(HintText& text, const vsa::TextRange& word) {
  const std::uint64_t before = text.endBefore(word.begin.offset);
  return text.at(word.begin.offset) == '.' && before > 0 && text.at(before - 1) == '{' &&
         text.at(text.beginBehind(word.end.offset)) == '}';
}

// Adds a hint for a list with a string in it, such as `["a" "b"]`.
bool hintForStringInList(HintText& text, const vsa::TextRange& open, Finding& finding) {
  const std::size_t quote = text.text().find_first_of("\"=;)]}", open.end.offset);
  if (quote == std::string_view::npos || text.at(quote) != '"') return false;
  finding.hint = "a list has numbers only";
  if (text.at(open.begin.offset) == '[') finding.hint += "; assign strings one by one with `[*]`";
  return true;
}

void hintForWordInList(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string word = loweredName(text.bytesOf(range));
  const std::uint64_t at = range.begin.offset;
  if (word == "true" || word == "false") {
    replace(finding, range, word == "true" ? "1" : "0");
  } else if (word == "infinity" || word == "-infinity") {
    replace(finding, range, word.front() == '-' ? "-inf" : "inf");
  } else if (const bool isHex = word.starts_with("0x"); isHex) {
    if (const auto decimal = decimalOfHexadecimal(std::string_view(word).substr(2))) {
      replace(finding, range, *decimal);
    }
  } else if (text.at(at) == '#' && hintForPrintedInfinity(text, at, finding)) {
    return;
  } else if (word.starts_with('#')) {
    finding.hint = "a list has no comments; move it behind the statement";
  } else if (isInCount(text, at)) {
    finding.hint = "a count is a whole number, such as `[3]`";
  } else if (isCompressed(text, range)) {
    finding.hint = "compressed data is written in hexadecimal, two digits for each byte";
  } else if (text.at(at) == '-' && text.at(text.endBefore(at) - 1) == '[') {
    finding.hint = "indices count from 0; `[*]` appends an element";
  } else if (text.at(text.endBefore(at) - 1) == '[') {
    finding.hint = "an index is a number, or `*` to append an element";
  } else {
    finding.hint = "a list has numbers only";
  }
}

}  // namespace

void hintForCharacter(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const vsa::TextRange& range = diagnostic.range;
  const std::string_view source = text.bytesOf(range);
  if (source.empty()) return;
  if (diagnostic.id == vsa::DiagnosticId::EndMark) {
    finding.hint = "write the byte 0xFF as `\\xff` in a string, and save the file as UTF-8";
  } else if (diagnostic.id == vsa::DiagnosticId::InvalidToken) {
    const std::uint64_t before = text.endBefore(range.begin.offset);
    const bool isBehindDigit =
        before != 0 && zn::char_class::is(text.at(before - 1), zn::char_class::DIGIT);
    const std::uint64_t at = range.begin.offset;
    const char next = text.at(at + 1);
    const char previous = at > 0 ? text.at(at - 1) : '\0';
    const bool isArrow = (source.front() == '<' && (next == '-' || next == '=')) ||
                         (source.front() == '>' && (previous == '-' || previous == '='));
    if (const auto open = openStringBefore(text.text(), at)) {
      finding.range = text.rangeOf(text.text().substr(*open, 1));
      hintForUnclosed(text, *finding.range, finding);
      return;
    }
    if (hintForConflict(text, range, finding) || hintForArrowInPath(text, at, finding)) return;
    finding.hint = hintForInvalid(source.front(), isBehindDigit, isArrow);
  } else if (isOpening(source) && text.endBefore(range.begin.offset) == 0) {
    finding.hint = hintForInvalid('<', false, false);
  } else if (isBlock(text, range.begin.offset)) {
    finding.hint = "there are no blocks: end the declaration with `:`, and begin inputs with `.`";
  } else if (hintForBracketList(text, bracketBefore(text, range.begin.offset), finding)) {
    return;
  } else if (isOpening(source) && !hintForStringInList(text, range, finding)) {
    hintForUnclosed(text, range, finding);
  } else if (!isOpening(source)) {
    hintForWordInList(text, range, finding);
  }
}

}  // namespace vsa_tools
