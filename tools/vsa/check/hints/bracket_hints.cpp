// Hints for strings and lists that are not closed, for lists in brackets, and for the lines that a
// merge leaves.
#include <algorithm>
#include <string>
#include <vector>

#include <vsa/foundation/char_class.h>
#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/text/statement_scan.h"

namespace vsa_tools {

namespace {

namespace char_class = zn::char_class;

bool mayBeIn(char open, char c) {
  if (open == '[') return c == '[' || c == '*' || char_class::is(c, char_class::DIGIT);
  return c == ',' || std::string_view("()[]{}").find(c) != std::string_view::npos ||
         char_class::is(c, char_class::NUMBER);
}

// Returns the offset at which the reader notices that the string or list at `open` is not closed.
// For a string, this is what follows the next quote, or the end of the text if there is none. For a
// list, it is the first character that is not allowed in such a list, or the end of the text if
// there is none.
std::uint64_t noticedAt(const HintText& text, std::uint64_t open) {
  const std::string_view all = text.text();
  const char first = text.at(open);
  if (first == '"') {
    const std::uint64_t end = endOfString(all, open);
    return text.beginBehind(end);
  }
  std::uint64_t at = open + 1;
  while (at < all.size() &&
         (mayBeIn(first, all[at]) || char_class::is(all[at], char_class::WHITE))) {
    ++at;
  }
  return at;
}

const char* hintFor(char open) {
  switch (open) {
    case '"':
      return "close the string with `\"`; a backslash before it is written `\\\\`";
    case '(':
      return "close the list with `)`";
    case '{':
      return "close the list with `}`";
    default:
      return "close the brackets with `]`";
  }
}

}  // namespace

bool isOpening(std::string_view source) {
  return source.size() == 1 && std::string_view("\"({[").find(source) != source.npos;
}

void hintForUnclosed(HintText& text, const vsa::TextRange& open, Finding& finding) {
  const std::vector<std::size_t> semicolons = semicolonsInList(text.text(), open.begin.offset);
  if (!semicolons.empty()) {
    finding.range = text.rangeOf(text.text().substr(semicolons.front(), 1));
    finding.hint = "blanks and commas separate the numbers of a list, and `;` ends the statement";
    for (const std::size_t at : semicolons) finding.edits.push_back({at, at + 1, ","});
    return;
  }
  finding.hint = hintFor(text.at(open.begin.offset));
  const std::uint64_t noticed = noticedAt(text, open.begin.offset);
  const bool isAtEnd = noticed >= text.text().size();
  // At the end of the text, the place of the note is the end of the last line that is not empty.
  const std::uint64_t at = isAtEnd ? std::max(text.endBefore(noticed), open.end.offset) : noticed;
  finding.notes.push_back(
      {text.rangeOf(text.text().substr(at, isAtEnd ? 0 : 1)),
       isAtEnd ? "the text ends here, and nothing has closed it" : "the reader notices it here"});
}

bool hintForConflict(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::size_t begin = range.begin.offset;
  if (!isConflictMarker(text.text(), begin)) return false;
  const std::string_view line = text.text().substr(begin);
  finding.range = text.rangeOf(line.substr(0, line.find_first_of("\r\n")));
  finding.hint = "a merge left both versions in the file: keep one of them";
  return true;
}

bool hintForBracketList(const HintText& text, std::uint64_t open, Finding& finding) {
  const std::uint64_t before = text.endBefore(open);
  if (text.at(open) != '[' || before == 0 || text.at(before - 1) != '=') return false;
  const std::size_t close = text.text().find_first_not_of("0123456789.,-+eE \t\r\n", open + 1);
  if (text.at(close) != ']') return false;
  const std::string numbers(text.text().substr(open + 1, close - open - 1));
  vsa::ListPart part;
  std::size_t count = 0;
  const std::string list = '{' + numbers + '}';
  for (vsa::ListReader reader(list); reader.next(part);) ++count;
  if (count == 0) return false;
  const std::string type(bufferTypeFor(list));
  if (type.empty()) return false;
  vsa::TextRange range;
  range.begin.offset = open;
  range.end.offset = close + 1;
  replace(finding, range, type + '[' + std::to_string(count) + "] " + list);
  return true;
}

}  // namespace vsa_tools
