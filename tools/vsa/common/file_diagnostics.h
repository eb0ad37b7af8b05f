// The diagnostics of one file on standard error.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/foundation/log.h>
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/read_scene.h"

namespace vsa_tools {

/// Prints the diagnostics of one file while it is read, and counts them. It keeps none in memory: a
/// log can be far longer than its text.
class FileDiagnostics : public zn::LogSink, public zn::korvo_sdk::DiagnosticSink {
 public:
  explicit FileDiagnostics(std::string name) : name_(std::move(name)) {}

  void report(const zn::korvo_sdk::Diagnostic& diagnostic) override;
  /// The line of the record reported last, or a line without a record.
  void write(zn::LogLevel level, const zn::String& text) override;
  /// Prints the errors that the log does not contain.
  void add(const FileOutcome& outcome);

  size_t warnings() const { return warnings_; }
  size_t errors() const { return errors_; }

 private:
  void print(const std::optional<Position>& position, zn::LogLevel level, std::string_view text);

  std::string name_;
  std::optional<Position> position_;  // of the record whose line comes next
  size_t warnings_ = 0, errors_ = 0;
};

}  // namespace vsa_tools
