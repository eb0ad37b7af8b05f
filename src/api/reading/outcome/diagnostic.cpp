#include <vsa/reading/read_diagnostic.h>

#include <cstddef>

#include <vsa/diagnostics/diagnostic_table.h>

namespace vsa {

namespace {

// Whether a log line with a position ends with a period after the message. Only those of the lexer
// do not.
bool endsWithPeriod(DiagnosticId id) {
  return id != DiagnosticId::InvalidToken && id != DiagnosticId::InvalidListToken;
}

}  // namespace

std::string Diagnostic::logLine() const {
  if (kind.empty()) return message;
  std::string line = kind + " (" + std::to_string(logLineNumber) + ',' + std::to_string(logColumn) +
                     "): " + message;
  if (endsWithPeriod(id)) line += '.';
  return line;
}

std::string_view Diagnostic::argument(std::string_view name) const noexcept {
  const int index = zn::korvo_sdk::argumentIndex(argumentNames(id), name);
  if (index < 0 || static_cast<std::size_t>(index) >= arguments.size()) return {};
  return arguments[static_cast<std::size_t>(index)];
}

}  // namespace vsa
