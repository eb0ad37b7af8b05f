#include "tools/vsa/common/read_arguments.h"

#include "tools/vsa/common/freed_memory.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

namespace {

// From this size of a message in bytes, the C library allocates its texts as blocks that it returns
// to the system.
constexpr std::size_t LARGE_MESSAGE_BYTES = std::size_t{1} << 16;
constexpr std::size_t LARGE_BLOCK_BYTES = std::size_t{1} << 25;

// Keeps the memory of the texts of a diagnostic for the next one if they are long. With a name of
// 1 MB, vsa convert took 29 s for 10,000 diagnostics when their pages were returned and cleared
// each time, and takes 1.3 s.
void keepMemoryOf(const vsa::Diagnostic& diagnostic) {
  if (diagnostic.message.size() < LARGE_MESSAGE_BYTES) return;
  [[maybe_unused]] static const bool IS_KEPT = (keepFreedMemory(LARGE_BLOCK_BYTES), true);
}

}  // namespace

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
  keepMemoryOf(diagnostic);
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
