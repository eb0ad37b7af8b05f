// FileDiagnostics: prints the diagnostics of one file to standard error.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/common/read_scene.h"

namespace vsa_tools {

/// Prints the diagnostics of one file while it is read, up to --max-diagnostics. It keeps none in
/// memory.
class FileDiagnostics {
 public:
  /// `arguments` must outlive the object.
  FileDiagnostics(std::string name, const ReadArguments& arguments)
      : name_(std::move(name)), arguments_(arguments) {}

  /// Returns options for a reading whose diagnostics this object is to print. The object must
  /// outlive the reading.
  vsa::ReadOptions options();
  /// Prints the errors that are not in the log, and how many diagnostics were not printed. Must be
  /// called once, after the reading.
  void add(const FileOutcome& outcome);

 private:
  bool printsMore();
  void add(const vsa::Diagnostic& diagnostic);
  void print(const std::optional<Position>& position, vsa::Severity severity,
             std::string_view text) const;

  std::string name_;
  const ReadArguments& arguments_;
  ReadingEnd end_;
  std::uint64_t printed_ = 0, notPrinted_ = 0;
};

}  // namespace vsa_tools
