// The files that a command works on, as its command line names them.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/common/command_options.h"

namespace vsa_tools {

/// The files that FileArguments names.
struct ListedFiles {
  /// The names in the order of the arguments; "-" is standard input.
  std::vector<std::string> names;
  /// EXIT_USAGE if an argument names no files; the reason was printed. Otherwise EXIT_READ.
  int exitStatus = 0;
};

/// The arguments FILES, each a file, a folder or a list (see listFiles()), and the option -0. Must
/// not move after addTo().
class FileArguments {
 public:
  /// `purpose` begins the help: "Files to format".
  CommandOption addTo(CommandOptions& options, const std::string& purpose);
  /// Adds -j, for a command that works on several files at the same time.
  void addJobsTo(CommandOptions& options);

  /// The files that the arguments name; without arguments, `byDefault`. If an argument names no
  /// files, prints the reason.
  ListedFiles list(const std::vector<std::string>& byDefault = {}) const;
  /// The number of threads for the files: one unless -j was given.
  unsigned workers() const;

 private:
  std::vector<std::string> arguments_;
  bool isNulSeparated_ = false;
  unsigned workers_ = 1;
};

}  // namespace vsa_tools
