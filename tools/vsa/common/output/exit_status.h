// The exit statuses of the process, and the output of the command's own errors.
#pragma once

#include <string>

namespace vsa_tools {

/// The exit statuses. If several apply, the highest one is returned, except that dump and tree may
/// return a lower one after Ctrl-C.
enum ExitStatus {
  /// None of the reasons below applies.
  EXIT_READ = 0,
  /// A text was not read completely, has a NUL byte, is compressed or has another encoding. For
  /// check, such a problem is an error like any other, and does not count if it is ignored or in
  /// the baseline. Also: check printed an error, with --strict a warning, or more than
  /// --max-diagnostics findings; fmt --check or --diff found a text that is not formatted; fmt left
  /// a file alone, because its formatted text reads differently; diff found a difference; a text
  /// cannot represent the scene to write; a pattern or name matches no node; or merge without
  /// --rename found a name twice.
  EXIT_NOT_READ = 1,
  /// The command line is wrong, a file cannot be opened, listFiles() found a problem (such as a
  /// folder without *.vsa files), a types file is invalid, the output cannot be made or written
  /// (also: dump needs --large-buffers), or the command has thrown an exception.
  /// For check, also: a file cannot be read to its end. For diff, also: a text was not read
  /// completely.
  EXIT_USAGE = 2,
  /// Ctrl-C ended the command before it was done. The value is 128 plus the number of the signal.
  EXIT_INTERRUPTED = 130,
};

/// Writes the line "vsa: TEXT" to standard error, with `text` escaped by printableLine().
void printError(const std::string& text);

}  // namespace vsa_tools
