#include "tools/vsa/common/output/quoted_text.h"

#include <utf8.h>

#include <vector>

#include <vsa/diagnostics/diagnostic_table.h>

namespace vsa_tools {

namespace {

constexpr std::size_t SHOWN_HEAD_BYTES = 120;
constexpr std::size_t SHOWN_TAIL_BYTES = 60;

// Returns the nearest offset at or before `at` at which a character begins, or `at` if none begins
// within 3 bytes before it. `at` must be at least 3.
std::size_t characterBegin(std::string_view text, std::size_t at) {
  constexpr std::size_t MAX_TRAIL_BYTES = 3;
  for (std::size_t back = 0; back <= MAX_TRAIL_BYTES; ++back) {
    if (!utf8::internal::is_trail(text[at - back])) return at - back;
  }
  return at;
}

// Shortens a message whose parts are not known. A message about a limit has up to 300 bytes and a
// path of up to 200 bytes, and is not cut.
std::string shortenedMessage(const std::string& message) {
  constexpr std::size_t MAX_MESSAGE_BYTES = 500;
  return message.size() <= MAX_MESSAGE_BYTES ? message : shortened(message);
}

// Returns the message for a format and its arguments, which are shortened. A conversion in the
// format is "%", an optional "ll" and a letter.
std::string formatted(std::string_view format, const std::vector<std::string>& arguments) {
  std::string result;
  for (const std::string& argument : arguments) {
    const std::size_t conversion = format.find('%');
    result += format.substr(0, conversion);
    result += shortened(argument);
    format.remove_prefix(format.find_first_not_of('l', conversion + 1) + 1);
  }
  return result += format;
}

}  // namespace

std::string shortened(std::string_view text) {
  if (text.size() <= MAX_QUOTED_BYTES) return std::string(text);
  const std::size_t head = characterBegin(text, SHOWN_HEAD_BYTES);
  const std::size_t tail = characterBegin(text, text.size() - SHOWN_TAIL_BYTES);
  std::string result(text.substr(0, head));
  result += "[... " + std::to_string(tail - head) + " bytes ...]";
  return result += text.substr(tail);
}

std::string withShortQuotes(const vsa::Diagnostic& diagnostic) {
  if (diagnostic.message.size() <= MAX_QUOTED_BYTES) return diagnostic.message;
  const auto index = static_cast<int>(diagnostic.id);
  if (index >= zn::korvo_sdk::DIAGNOSTIC_COUNT) return shortenedMessage(diagnostic.message);
  const zn::korvo_sdk::DiagnosticRow& row = zn::korvo_sdk::DIAGNOSTIC_ROWS[index];
  const auto count = static_cast<std::size_t>(zn::korvo_sdk::argumentCount(row.arguments));
  if (diagnostic.arguments.size() != count) return shortened(diagnostic.message);
  return formatted(row.format, diagnostic.arguments);
}

}  // namespace vsa_tools
