// The commands of vsa. Each returns the exit status of the process.
#pragma once

#include <string>
#include <vector>

#include <vsa/write_options.h>

namespace vsa_tools {

/// Exit statuses. If several apply, the highest one is returned.
enum ExitStatus {
  /// Every text was read completely.
  EXIT_READ = 0,
  /// A text was not read completely; with --strict also: a text logged a message.
  EXIT_NOT_READ = 1,
  /// The command line is wrong, a file cannot be opened, or the output cannot be written.
  EXIT_USAGE = 2,
};

/// Reads each file and writes its diagnostics, one per line, then a summary, to standard error.
/// `strict` makes any logged message an EXIT_NOT_READ.
int commandCheck(const std::vector<std::string>& files, bool strict);

/// Writes the scene of one file as JSON to standard output.
int commandDump(const std::string& file);

/// Reads one file and writes its scene as a text to the file `output` ("-" is standard output),
/// which may be the same one. Writes nothing unless the file was read completely.
int commandConvert(const std::string& file, const std::string& output,
                   const vsa::WriteOptions& options);

/// Writes the line "vsa: TEXT" to standard error, with `text` escaped by printable().
void printError(const std::string& text);

}  // namespace vsa_tools
