// The files that the FILE arguments of a command name.
#pragma once

#include <string>
#include <vector>

namespace vsa_tools {

/// A folder without *.vsa files, a folder or list that cannot be opened or read to its end, or
/// standard input that is named twice, and the reason.
struct FileListProblem {
  std::string name;
  std::string text;

  friend bool operator==(const FileListProblem&, const FileListProblem&) = default;
};

struct FileList {
  /// The files in the order of the arguments. "-" is standard input.
  std::vector<std::string> files;
  std::vector<FileListProblem> problems;
};

/// The character that ends each name in a list of files.
enum class NameSeparator : char { LineEnd = '\n', Nul = '\0' };

/// Returns the files that the arguments name. An argument has one of three forms:
///   FOLDER  all *.vsa in the folder and its subfolders, sorted by path. Inside it, files and
///           folders whose names begin with a period are omitted, and so are pipes, sockets and
///           devices. Links to folders are not followed.
///   @LIST   the files and folders that the file LIST names ("@-" reads the list from standard
///           input). "@x" in a list is the file of that name, not another list. Empty names are
///           skipped and, unless the separator is NameSeparator::Nul, names of blanks only.
///   FILE    the file, even if it does not exist ("-" is standard input, and "./@x" is for a name
///           that begins with "@")
FileList listFiles(const std::vector<std::string>& arguments,
                   NameSeparator separator = NameSeparator::LineEnd);

}  // namespace vsa_tools
