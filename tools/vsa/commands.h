// The commands of vsa. Each returns the exit status of the process.
#pragma once

#include <string>
#include <vector>

namespace vsa_tools {

/// Exit statuses. Of several that apply the greatest is the one.
enum ExitStatus {
  /// Everything was read.
  EXIT_READ = 0,
  /// A text was not read whole (or, with --strict, was not read in silence).
  EXIT_NOT_READ = 1,
  /// The command line is wrong, a file cannot be opened, or the output cannot be written.
  EXIT_USAGE = 2,
};

/// Reads each file and writes its diagnostics, one a line, then a summary, to standard error. With
/// `strict` a file that logged anything counts as not read.
int commandCheck(const std::vector<std::string>& files, bool strict);

/// Writes the scene of one file as JSON to standard output.
int commandDump(const std::string& file);

/// One line of the command's own on standard error: "vsa: TEXT".
void printError(const std::string& text);

}  // namespace vsa_tools
