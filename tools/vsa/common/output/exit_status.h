// The exit statuses of the process, and the output of the command's own errors.
#pragma once

#include <string>

namespace vsa_tools {

/// The exit statuses. If several apply, the command returns the highest one.
enum ExitStatus {
  /// Every text was read completely.
  EXIT_READ = 0,
  /// A text was not read completely. With --strict, also: a text has a diagnostic.
  EXIT_NOT_READ = 1,
  /// The command line is wrong, a file cannot be opened, or the output cannot be written.
  EXIT_USAGE = 2,
  /// Ctrl-C ended the command before it was done. The value is 128 plus the number of the signal.
  EXIT_INTERRUPTED = 130,
};

/// Writes the line "vsa: TEXT" to standard error, with `text` escaped by printableLine().
void printError(const std::string& text);

}  // namespace vsa_tools
