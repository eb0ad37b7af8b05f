#include "tools/vsa/common/read_arguments.h"

#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

void ReadArguments::addTo(CommandOptions& options) {
  options
      .add("--memory", memory_,
           "Memory that a text may take, such as 8G; without it 64 MiB, 100 bytes for each "
           "byte of the text, and what compressed buffers expand to")
      .sizeInBytes()
      .valueName("SIZE");
  options.add("--max-text", maxText_, "Do not read texts that are longer")
      .sizeInBytes()
      .valueName("SIZE");
  options.add("--max-diagnostics", maxDiagnostics_, "Diagnostics to print; others are counted")
      .notNegative()
      .showDefault()
      .valueName("N");
  options.addFlag("--full", isFull_, "Do not shorten long names and values in diagnostics");
}

vsa::ReadOptions ReadArguments::options() const {
  vsa::ReadOptions options;
  options.limits.memory = memory_;
  options.limits.textBytes = maxText_.value_or(vsa::UNLIMITED);
  options.keptDiagnostics = maxDiagnostics_;
  options.onProgress = [](const vsa::ReadProgress&) { return !isInterrupted(); };
  return options;
}

// The message of an invalid token is only the character, and its kind describes the problem:
// "INVALID PAREN LIST TOKEN". The other kinds, such as "PARSE ERROR", add nothing to the level and
// the message.
std::string ReadArguments::messageOf(const vsa::Diagnostic& diagnostic) const {
  std::string text;
  if (diagnostic.id == vsa::DiagnosticId::InvalidToken ||
      diagnostic.id == vsa::DiagnosticId::InvalidListToken) {
    for (const char c : diagnostic.kind) {
      text += static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    }
    text += ' ';
  }
  return text + shortMessage(diagnostic);
}

std::string ReadArguments::shortMessage(const vsa::Diagnostic& diagnostic) const {
  return isFull_ ? diagnostic.message : withShortQuotes(diagnostic);
}

std::string ReadArguments::lineOf(const vsa::Diagnostic& diagnostic) const {
  if (isFull_) return diagnostic.logLine();
  vsa::Diagnostic shortened;
  shortened.id = diagnostic.id;
  shortened.kind = diagnostic.kind;
  shortened.logLineNumber = diagnostic.logLineNumber;
  shortened.logColumn = diagnostic.logColumn;
  shortened.message = shortMessage(diagnostic);
  return shortened.logLine();
}

}  // namespace vsa_tools
