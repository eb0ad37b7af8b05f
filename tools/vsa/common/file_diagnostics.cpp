#include "tools/vsa/common/file_diagnostics.h"

#include <cstdio>

namespace vsa_tools {

void FileDiagnostics::report(const zn::korvo_sdk::Diagnostic& diagnostic) {
  position_ = positionOf(diagnostic);
}

void FileDiagnostics::write(zn::LogLevel level, const zn::String& text) {
  print(std::exchange(position_, std::nullopt), level, text.view());
}

void FileDiagnostics::add(const FileOutcome& outcome) {
  const auto& diagnostic = outcome.escapedDiagnostic;
  const auto position = diagnostic ? positionOf(*diagnostic) : std::nullopt;
  if (outcome.escaped) print(position, zn::LogLevel::Error, *outcome.escaped);
  for (const Loss& loss : outcome.losses) print(loss.position, zn::LogLevel::Error, loss.text);
}

void FileDiagnostics::print(const std::optional<Position>& position, zn::LogLevel level,
                            std::string_view text) {
  const bool warning = level == zn::LogLevel::Warning;
  ++(warning ? warnings_ : errors_);
  std::fprintf(stderr, "%s\n",
               diagnosticLine(name_, position, warning ? "warning" : "error", text).c_str());
}

}  // namespace vsa_tools
