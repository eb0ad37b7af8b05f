// Prints the table of diagnostics, one line for each row: id, kind, severity, the log line with its
// printf conversions, and the names of its arguments.
#include <cstdio>
#include <string>

#include <vsa/vsa.h>

namespace {

using namespace zn::korvo_sdk;

std::string logLine(const DiagnosticRow& row) {
  if (*row.kind == '\0') return row.format;
  const std::string line = std::string(row.kind) + " (%d,%d): " + row.format;
  return row.position == PositionOf::LastCharacter ? line : line + ".";
}

const char* word(Severity severity) {
  return severity == Severity::Warning ? "warning"
         : severity == Severity::Error ? "error"
                                       : "fatal";
}

}  // namespace

int main() {
  for (const DiagnosticRow& row : DIAGNOSTIC_ROWS) {
    std::printf("%s\t%s\t%s\t%s\t%s\n", row.name, row.kind, word(row.severity),
                logLine(row).c_str(), row.arguments);
  }
}
