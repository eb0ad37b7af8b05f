// The exit statuses of the process, and the output of the command's own errors.
#pragma once

#include <string>

namespace vsa_tools {

/// The exit statuses. If several apply, the command returns the highest one.
enum ExitStatus {
  /// None of the reasons below applies.
  EXIT_READ = 0,
  /// A text was not read completely (except for check, which may ignore that). Also: check found an
  /// error, with --strict a warning, or more than --max-diagnostics findings; fmt --check found a
  /// text that is not formatted; diff found a difference; a text cannot represent the scene to
  /// write; a pattern or name matches no node; or merge found a name twice.
  EXIT_NOT_READ = 1,
  /// The command line is wrong, a file cannot be opened, the output cannot be written, or the
  /// command has thrown an exception. For diff, also: a text was not read completely.
  EXIT_USAGE = 2,
  /// Ctrl-C ended the command before it was done. The value is 128 plus the number of the signal.
  EXIT_INTERRUPTED = 130,
};

/// Writes the line "vsa: TEXT" to standard error, with `text` escaped by printableLine().
void printError(const std::string& text);

}  // namespace vsa_tools
