#include "api/reading/source_range/number_fields.h"

#include <vsa/foundation/char_class.h>

namespace vsa {

namespace {

// Whether the character separates numbers: a comma, white space, or a bracket that is not of the
// kind of the list. Brackets of the list's own kind do not separate numbers, because the lexer only
// removes them.
bool isSeparator(char c, char open, char close) {
  if (c == open || c == close) return false;
  constexpr std::string_view OTHERS = ",()[]{}";
  return OTHERS.find(c) != std::string_view::npos || zn::char_class::is(c, zn::char_class::WHITE);
}

}  // namespace

std::optional<NumberField> findNumber(std::string_view list,
                                      const std::function<bool(const NumberField&)>& isWanted) {
  if (list.size() < 2) return std::nullopt;
  const char open = list.front();
  const char close = list.back();
  NumberField field{0, 0, {}, 0};
  for (std::size_t at = 1; at < list.size(); ++at) {
    const char c = list[at];
    const bool ends = at + 1 == list.size() || isSeparator(c, open, close);
    if (!ends && c != open && c != close) {
      if (field.text.empty()) field.begin = at;
      field.text += c;
      field.end = at + 1;
    } else if (ends && !field.text.empty()) {
      if (isWanted(field)) return field;
      field.text.clear();
      ++field.index;
    }
  }
  return std::nullopt;
}

}  // namespace vsa
