// The files that the FILE arguments of a command name.
#pragma once

#include <string>
#include <vector>

namespace vsa_tools {

/// An argument that names no files, and why.
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

/// What separates the names in a list of files.
enum class NameSeparator : char { LineEnd = '\n', Nul = '\0' };

/// The files of each argument:
///   FOLDER  all *.vsa in it and in its subfolders, sorted by name, without hidden files and
///           folders (those whose names begin with a period) and without following links to folders
///   @LIST   the files and folders that the file LIST names ("@-" reads the list from standard
///           input); blank names are skipped
///   FILE    the file, whether it exists or not; "./@x" for one whose name begins with "@"
FileList listFiles(const std::vector<std::string>& arguments,
                   NameSeparator separator = NameSeparator::LineEnd);

}  // namespace vsa_tools
