// FileArguments: the file arguments of a command.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/common/command_options.h"
#include "tools/vsa/common/files/file_list.h"

namespace vsa_tools {

/// The files that FileArguments names.
struct ListedFiles {
  /// The names in the order of the arguments. "-" is standard input.
  std::vector<std::string> names;
  /// EXIT_USAGE if listFiles() found a problem, which was printed. Otherwise EXIT_READ.
  int exitStatus = 0;
};

/// The arguments FILES and the option -0. Each argument is a file, a folder or a list (see
/// listFiles()). The object must not move after addTo().
class FileArguments {
 public:
  /// Adds the arguments and -0. `purpose` begins the help text, such as "Files to format".
  CommandOption addTo(CommandOptions& options, const std::string& purpose);
  /// Adds -j, for a command that works on several files at the same time.
  void addJobsTo(CommandOptions& options);

  /// Returns the files that the arguments name, or `byDefault` if there are no arguments. Prints
  /// the problems of the list.
  ListedFiles list(const std::vector<std::string>& byDefault = {}) const;
  const std::vector<std::string>& arguments() const { return arguments_; }
  /// Returns the character that ends each name in a list of files.
  NameSeparator separator() const;
  /// Returns the number of threads that work on files: see workersFor(). 1 without -j.
  unsigned workers() const;

 private:
  std::vector<std::string> arguments_;
  bool isNulSeparated_ = false;
  unsigned workers_ = 1;
};

}  // namespace vsa_tools
