#include "tools/vsa/common/read_arguments.h"

#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

namespace {

// CLI11 would take -1 for the greatest number.
CLI::Validator notNegative() {
  return CLI::Validator(
      [](std::string& text) { return text.starts_with('-') ? "a negative number" : ""; }, "");
}

// "8G" to its number of bytes. 1K is 1024 bytes.
CLI::Validator sizeInBytes() {
  CLI::AsSizeValue validator(false);
  validator.description("");
  return validator;
}

}  // namespace

void ReadArguments::addTo(CLI::App& app) {
  app.add_option("--memory", memory_,
                 "Memory that a text may take, such as 8G; without it 64 MiB, 100 bytes for each "
                 "byte of the text, and what compressed buffers expand to")
      ->transform(sizeInBytes())
      ->transform(notNegative())
      ->type_name("SIZE");
  app.add_option("--max-text", maxText_, "Do not read texts that are longer")
      ->transform(sizeInBytes())
      ->transform(notNegative())
      ->type_name("SIZE");
  app.add_option("--max-diagnostics", maxDiagnostics_, "Diagnostics to print; others are counted")
      ->check(notNegative())
      ->capture_default_str()
      ->type_name("N");
  app.add_flag("--full", isFull_, "Do not shorten long names and values in diagnostics");
}

vsa::ReadOptions ReadArguments::options() const {
  vsa::ReadOptions options;
  options.limits.memory = memory_;
  options.limits.textBytes = maxText_.value_or(vsa::UNLIMITED);
  options.keptDiagnostics = maxDiagnostics_;
  options.onProgress = [](const vsa::ReadProgress&) { return !isInterrupted(); };
  return options;
}

std::string ReadArguments::messageOf(const vsa::Diagnostic& diagnostic) const {
  return isFull_ ? diagnostic.message : withShortQuotes(diagnostic.id, diagnostic.message);
}

std::string ReadArguments::lineOf(const vsa::Diagnostic& diagnostic) const {
  if (isFull_) return diagnostic.logLine();
  vsa::Diagnostic shortened;
  shortened.id = diagnostic.id;
  shortened.kind = diagnostic.kind;
  shortened.logLineNumber = diagnostic.logLineNumber;
  shortened.logColumn = diagnostic.logColumn;
  shortened.message = messageOf(diagnostic);
  return shortened.logLine();
}

}  // namespace vsa_tools
