#include "tools/vsa/common/output/quoted_text.h"

#include <utf8.h>

#include <algorithm>

#include <vsa/diagnostics/diagnostic_table.h>

namespace vsa_tools {

namespace {

constexpr std::size_t HEAD_BYTES = 120;
constexpr std::size_t TAIL_BYTES = 60;

// The nearest position at or before `at` where a character begins.
std::size_t characterBegin(std::string_view text, std::size_t at) {
  constexpr std::size_t MAX_TRAIL_BYTES = 3;
  for (std::size_t back = 0; back <= MAX_TRAIL_BYTES && back <= at; ++back) {
    if (!utf8::internal::is_trail(text[at - back])) return at - back;
  }
  return at;
}

// "%s" of a diagnostic that is not in the table: the whole message.
std::string_view formatOf(vsa::DiagnosticId id) {
  const auto index = static_cast<int>(id);
  if (index >= zn::korvo_sdk::DIAGNOSTIC_COUNT) return "%s";
  return zn::korvo_sdk::rowOf(static_cast<zn::korvo_sdk::DiagnosticId>(index)).format;
}

// The literal text at the beginning of a format.
std::string_view literalOf(std::string_view format) {
  return format.substr(0, format.find('%'));
}

// What follows the conversion that the format begins with.
std::string_view behindConversion(std::string_view format) {
  return format.substr(format.find_first_not_of("%l") + 1);
}

// The length of what a conversion printed at the beginning of `message`, if `format` follows it.
std::size_t quotedBytes(std::string_view message, std::string_view format) {
  const std::string_view literal = literalOf(format);
  if (format.empty()) return message.size();
  if (literal.empty()) return 0;  // another conversion follows, which takes all
  if (literal.size() != format.size()) return std::min(message.find(literal), message.size());
  return message.size() - (message.ends_with(literal) ? literal.size() : 0);
}

}  // namespace

std::string shortened(std::string_view text) {
  if (text.size() <= MAX_QUOTED_BYTES) return std::string(text);
  const std::size_t head = characterBegin(text, HEAD_BYTES);
  const std::size_t tail = characterBegin(text, text.size() - TAIL_BYTES);
  std::string result(text.substr(0, head));
  result += "[... " + std::to_string(tail - head) + " bytes ...]";
  return result += text.substr(tail);
}

// A part that contains the words behind it is cut there, into two parts.
std::string withShortQuotes(vsa::DiagnosticId id, std::string_view message) {
  if (message.size() <= MAX_QUOTED_BYTES) return std::string(message);
  std::string result;
  std::string_view format = formatOf(id);
  while (message.starts_with(literalOf(format))) {
    const std::size_t literal = literalOf(format).size();
    result += message.substr(0, literal);
    message.remove_prefix(literal);
    format.remove_prefix(literal);
    if (format.empty()) break;
    format = behindConversion(format);
    const std::size_t quoted = quotedBytes(message, format);
    result += shortened(message.substr(0, quoted));
    message.remove_prefix(quoted);
  }
  return result + shortened(message);
}

}  // namespace vsa_tools
