#include <vsa/text_rules.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include <vsa/foundation/char_class.h>
#include <vsa/foundation/string.h>
#include "foundation/base/white_space.h"
#include "foundation/text/letter_case.h"
#include "scene/header_comment.h"
#include "scene/not_a_number.h"

namespace vsa {

namespace {

namespace char_class = zn::char_class;
using zn::isWord;
using zn::detail::trimmed;

// Whether a bracket list in a name may contain the character. The reader accepts a NUL there like
// white space. This function does not, because a name ends at its first NUL.
bool isInBrackets(char c) {
  const bool isWhite = char_class::is(c, char_class::WHITE) && c != '\0';
  return c == '[' || c == '*' || isWhite || char_class::is(c, char_class::DIGIT);
}

Status checkLine(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return EditError::NulCharacter;
  if (text.find_first_of("\n\r\xFF") != std::string_view::npos) return EditError::BadComment;
  return {};
}

}  // namespace

bool isName(TextParameter parameter) noexcept {
  const std::string_view text = parameter;
  if (text.empty()) return false;
  if (!char_class::is(text.front(), char_class::LETTER) && text.front() != '_') return false;
  for (const char c : text) {
    if (!char_class::is(c, char_class::NAME)) return false;
  }
  return !isWord(text, "true") && !isWord(text, "false") && !isWord(text, "null");
}

bool isOutputName(TextParameter parameter) noexcept {
  std::string_view text = parameter;
  const std::size_t brackets = std::min(text.find('['), text.size());
  if (!isName(text.substr(0, brackets))) return false;
  text.remove_prefix(brackets);
  while (!text.empty()) {
    const std::size_t end = text.find(']');
    if (text[0] != '[' || end == std::string_view::npos) return false;
    if (!std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(end),
                     isInBrackets)) {
      return false;
    }
    text.remove_prefix(end + 1);
  }
  return true;
}

Status checkReal(double value) noexcept {
  if (std::isinf(value) && value > 0) return EditError::PlusInfinity;
  const bool isReadable =
      !std::isnan(value) || (std::signbit(value) && !zn::korvo_sdk::isOtherNan(value));
  return isReadable ? EditError::None : EditError::NotANumber;
}

Status checkNumbers(std::span<const double> numbers) noexcept {
  return zn::korvo_sdk::haveOtherNan(numbers) ? EditError::NotANumber : EditError::None;
}

Status checkString(TextParameter text) noexcept {
  return text.view().find('\0') == std::string_view::npos ? EditError::None
                                                          : EditError::NulCharacter;
}

Status checkBuffer(ElementType type, std::span<const std::byte> bytes) noexcept {
  if (!zn::korvo_sdk::isBufferElement(type)) return EditError::BadBufferType;
  if (bytes.size() % zn::korvo_sdk::elementBytes(type) != 0) return EditError::BufferSize;
  return zn::korvo_sdk::haveOtherNan(type, bytes) ? EditError::NotANumber : EditError::None;
}

Status checkComment(TextParameter parameter) noexcept {
  const std::string_view comment = parameter;
  if (const Status line = checkLine(comment); !line) return line;
  if (!zn::korvo_sdk::setsVersion(comment)) return {};
  unsigned long long number = 0;
  try {
    const zn::String text = zn::String::copyOf(zn::korvo_sdk::headerValue(comment));
    if (zn::String::parse(text, number, zn::String::Radix::Decimal)) return {};
  } catch (const std::bad_alloc&) {
    return EditError::OutOfMemory;
  }
  return EditError::BadVersionComment;
}

Status checkTime(TextParameter parameter) noexcept {
  const std::string_view time = parameter;
  if (const Status line = checkLine(time); !line) {
    return line == EditError::BadComment ? EditError::BadTime : line;
  }
  if (trimmed(time).size() != time.size()) return EditError::BadTime;
  return zn::korvo_sdk::setsVersion(time) ? EditError::BadTime : EditError::None;
}

}  // namespace vsa
