#include "write/names.h"

#include <algorithm>

#include <vsa/foundation/char_class.h>
#include <vsa/text_rules.h>
#include "foundation/text/letter_case.h"

namespace vsa::impl {

namespace {

bool isInBrackets(char c) {
  const bool isWhite = zn::char_class::is(c, zn::char_class::WHITE);
  return c == '[' || c == '*' || zn::char_class::is(c, zn::char_class::DIGIT) ||
         (isWhite && c != '\0');
}

}  // namespace

bool isOutputName(std::string_view name) {
  const std::size_t brackets = std::min(name.find('['), name.size());
  if (!isName(name.substr(0, brackets))) return false;
  name.remove_prefix(brackets);
  while (!name.empty()) {
    const std::size_t end = name.find(']');
    if (end == std::string_view::npos || name[0] != '[') return false;
    if (!std::all_of(name.begin() + 1, name.begin() + end, isInBrackets)) return false;
    name.remove_prefix(end + 1);
  }
  return true;
}

bool isStatementWord(std::string_view type) {
  return zn::isWord(type, "remove") || zn::isWord(type, "define");
}

}  // namespace vsa::impl
