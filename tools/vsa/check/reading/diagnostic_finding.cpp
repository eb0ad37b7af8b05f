#include "tools/vsa/check/reading/diagnostic_finding.h"

#include <string>
#include <utility>

namespace vsa_tools {

namespace {

// Removes the periods and blanks at the end of a message: the period of the log line, and the
// period that some messages have before it. Keeps three periods, which end a shortened text.
std::string withoutPeriod(std::string text) {
  const std::size_t length = text.find_last_not_of('.') + 1;
  const std::size_t periods = text.size() - length;
  text.resize(length + (periods > 2 ? 3 : 0));
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

// The diagnostic of an invalid token has only the character as its message, and describes the
// problem in its kind: "INVALID PAREN LIST TOKEN". The message of the finding therefore begins with
// that kind. All other kinds only repeat the severity.
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
