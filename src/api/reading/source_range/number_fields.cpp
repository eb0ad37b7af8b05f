#include "api/reading/source_range/number_fields.h"

#include <vsa/foundation/char_class.h>

namespace vsa {

namespace {

bool isWhite(char c) {
  return zn::char_class::is(c, zn::char_class::WHITE);
}

// Whether the character can separate numbers: a comma, white space, or a bracket that is not of the
// kind of the list. Brackets of the list's own kind do not separate numbers, because the lexer only
// removes them.
bool isSeparator(char c, char open, char close) {
  if (c == open || c == close) return false;
  constexpr std::string_view OTHERS = ",()[]{}";
  return OTHERS.find(c) != std::string_view::npos || isWhite(c);
}

// Returns the offset after the character at `at`, or after the run of white space that begins
// there.
std::size_t offsetAfter(std::string_view list, std::size_t at) {
  std::size_t next = at + 1;
  while (isWhite(list[at]) && next < list.size() && isWhite(list[next])) ++next;
  return next;
}

}  // namespace

std::optional<NumberField> findNumber(std::string_view list,
                                      const std::function<bool(const NumberField&)>& isWanted) {
  if (list.size() < 2) return std::nullopt;
  const char open = list.front();
  const char close = list.back();
  NumberField field{0, 0, {}, 0};
  for (std::size_t at = 1; at < list.size();) {
    const char c = list[at];
    const std::size_t next = offsetAfter(list, at);
    const bool isLast = next == list.size();
    const bool mayEnd = isSeparator(c, open, close);
    // The lexer puts no blank before a closing bracket, also where it then removes the bracket.
    const bool ends = isLast || (mayEnd && list[next] != close);
    if (!isLast && !mayEnd && c != open && c != close) {
      if (field.text.empty()) field.begin = at;
      field.text += c;
      field.end = next;
    } else if (ends && !field.text.empty()) {
      if (isWanted(field)) return field;
      field.text.clear();
      ++field.index;
    }
    at = next;
  }
  return std::nullopt;
}

}  // namespace vsa
