#include "tools/vsa/check/reading/diagnostic_finding.h"

#include <string>
#include <utility>

namespace vsa_tools {

namespace {

// Removes the periods at the end of a message, and then the blanks, because the message of a
// finding has no final period. Exception: three or more periods become three, because "..." is the
// end of a shortened text.
std::string withoutPeriod(std::string text) {
  const std::size_t length = text.find_last_not_of('.') + 1;
  const std::size_t periods = text.size() - length;
  text.resize(length + (periods > 2 ? 3 : 0));
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

// Returns the message of a finding. The message of an invalid token is only the character, and its
// kind describes the problem: "INVALID PAREN LIST TOKEN". Therefore the finding begins with that
// kind, in lower case. The other kinds, such as "PARSE ERROR", add nothing to the level and the
// message.
std::string messageOf(const vsa::Diagnostic& diagnostic, const ReadArguments& reading) {
  std::string text;
  if (diagnostic.id == vsa::DiagnosticId::InvalidToken ||
      diagnostic.id == vsa::DiagnosticId::InvalidListToken) {
    for (const char c : diagnostic.kind) {
      text += static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    }
    text += ' ';
  }
  text += reading.messageOf(diagnostic);
  return withoutPeriod(std::move(text));
}

}  // namespace

Finding findingOf(const vsa::Diagnostic& diagnostic, const ReadArguments& reading) {
  Finding finding;
  finding.level = diagnostic.severity == vsa::Severity::Warning ? Level::Warning : Level::Error;
  finding.id = vsa::name(diagnostic.id);
  finding.message = messageOf(diagnostic, reading);
  finding.range = diagnostic.range;
  finding.logLine = reading.lineOf(diagnostic);
  return finding;
}

}  // namespace vsa_tools
