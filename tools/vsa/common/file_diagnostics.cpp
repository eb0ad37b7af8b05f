#include "tools/vsa/common/file_diagnostics.h"

#include "tools/vsa/common/output/output.h"

namespace vsa_tools {

vsa::ReadOptions FileDiagnostics::options() {
  vsa::ReadOptions options = arguments_.options();
  options.onDiagnostic = [this](const vsa::Diagnostic& found) { add(found); };
  options.wantsDiagnostic = [this](vsa::DiagnosticId) { return printsMore(); };
  return options;
}

// Returns whether a further diagnostic is printed. Counts it if not.
bool FileDiagnostics::printsMore() {
  if (printed_ < arguments_.maxDiagnostics()) return true;
  ++notPrinted_;
  return false;
}

// Prints or counts a diagnostic. The one that tells why the reading is not complete is printed even
// after --max-diagnostics.
void FileDiagnostics::add(const vsa::Diagnostic& diagnostic) {
  const bool isPrinted = end_.isToldBy(diagnostic) || printed_ < arguments_.maxDiagnostics();
  ++(isPrinted ? printed_ : notPrinted_);
  if (isPrinted) print(positionOf(diagnostic), diagnostic.severity, arguments_.lineOf(diagnostic));
}

void FileDiagnostics::add(const FileOutcome& outcome) {
  for (const Loss& loss : outcome.losses) {
    print(loss.position, vsa::Severity::Error, loss.text);
  }
  if (notPrinted_ > 0) printNotPrinted(name_, notPrinted_);
}

void FileDiagnostics::print(const std::optional<Position>& position, vsa::Severity severity,
                            std::string_view text) const {
  printLine(diagnosticLine(name_, position, vsa::name(severity), text));
}

}  // namespace vsa_tools
