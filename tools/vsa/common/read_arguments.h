// The options of the commands that read texts: the limits of a reading, and how much is printed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <vsa/reading/read_options.h>
#include "tools/vsa/common/command_options.h"

namespace vsa_tools {

class ReadArguments {
 public:
  /// Adds --memory, --max-text, --max-diagnostics and --full. The object must not move after that,
  /// because the parser of the command line stores values in its members.
  void addTo(CommandOptions& options);

  /// Returns the options of one reading: the limits, the number of kept diagnostics, and a progress
  /// function. That function ends the reading as soon as isInterrupted() is true. A command that
  /// sets another `onProgress` must call isInterrupted() there.
  vsa::ReadOptions options() const;

  /// The maximum number of diagnostics to print. Most commands only count further diagnostics and
  /// print their number, but still print the one that ended the reading. vsa check ends instead.
  std::uint64_t maxDiagnostics() const { return maxDiagnostics_; }

  /// Returns the log line of a diagnostic as a command prints it, but not escaped. Unless --full
  /// was given, it is shortened as by withShortQuotes().
  std::string lineOf(const vsa::Diagnostic& diagnostic) const;
  /// Returns the message of a diagnostic without position. It is shortened as in lineOf(). That of
  /// an invalid token begins with its kind: "invalid brace list token 'y'".
  std::string messageOf(const vsa::Diagnostic& diagnostic) const;

 private:
  std::string shortMessage(const vsa::Diagnostic& diagnostic) const;

  std::optional<std::uint64_t> memory_;
  std::optional<std::uint64_t> maxText_;
  std::uint64_t maxDiagnostics_ = 10000;
  bool isFull_ = false;
};

}  // namespace vsa_tools
