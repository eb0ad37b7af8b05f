// The options of every command that reads texts: limits for the text, and how much is printed about
// it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <vsa/reading/read_options.h>
#include "tools/vsa/common/command_options.h"

namespace vsa_tools {

class ReadArguments {
 public:
  /// Adds --memory, --max-text, --max-diagnostics and --full. The parser of the command line fills
  /// the members, so the object must not move.
  void addTo(CommandOptions& options);

  /// The options of one reading: the limits, and a progress function that ends the reading as soon
  /// as isInterrupted() is true. A command that replaces `onProgress` must call isInterrupted()
  /// itself.
  vsa::ReadOptions options() const;

  /// The maximum number of diagnostics to print. The command counts the others and prints their
  /// number.
  std::uint64_t maxDiagnostics() const { return maxDiagnostics_; }

  /// The log line of a diagnostic as a command prints it. Unless --full was given, parts that are
  /// quoted from the text and longer than MAX_QUOTED_BYTES are shortened. The line is not escaped.
  std::string lineOf(const vsa::Diagnostic& diagnostic) const;
  /// The message of a diagnostic, without kind and position, and shortened like lineOf().
  std::string messageOf(const vsa::Diagnostic& diagnostic) const;

 private:
  std::optional<std::uint64_t> memory_;
  std::optional<std::uint64_t> maxText_;
  std::uint64_t maxDiagnostics_ = 10000;
  bool isFull_ = false;
};

}  // namespace vsa_tools
