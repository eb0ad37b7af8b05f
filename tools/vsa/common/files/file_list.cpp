#include "tools/vsa/common/files/file_list.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>
#include <system_error>

namespace vsa_tools {

namespace {

namespace fs = std::filesystem;

class FileLister {
 public:
  explicit FileLister(NameSeparator separator) : separator_(static_cast<char>(separator)) {}

  void addArgument(const std::string& argument) {
    if (argument.size() > 1 && argument.front() == '@') {
      addList(argument.substr(1));
    } else {
      addFileOrFolder(argument);
    }
  }

  FileList list;

 private:
  void addFileOrFolder(const std::string& name) {
    std::error_code ignored;  // a file that cannot be found is reported when it is opened
    if (name == "-") {
      if (takeStandardInput()) list.files.push_back(name);
    } else if (fs::is_directory(name, ignored)) {
      addFolder(name);
    } else {
      list.files.push_back(name);
    }
  }

  void addFolder(const std::string& name) {
    const std::size_t before = list.files.size();
    const std::size_t problemsBefore = list.problems.size();
    addContent(name);
    std::sort(list.files.begin() + static_cast<std::ptrdiff_t>(before), list.files.end());
    if (list.files.size() == before && list.problems.size() == problemsBefore) {
      list.problems.push_back({name, "there are no *.vsa files in this folder"});
    }
  }

  void addContent(const std::string& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
      addEntry(*entry);
    }
    if (error) list.problems.push_back({folder, error.message()});
  }

  void addEntry(const fs::directory_entry& entry) {
    const std::string& path = entry.path().native();
    const std::string_view name = std::string_view(path).substr(path.rfind('/') + 1);
    if (name.starts_with('.')) return;
    std::error_code ignored;
    if (entry.is_directory(ignored)) {
      if (!entry.is_symlink(ignored)) addContent(path);
    } else if (name.ends_with(".vsa") && !isSpecial(entry)) {
      list.files.push_back(path);
    }
  }

  // Returns whether the entry is a pipe, a socket or a device, or a link to one. Reading it could
  // wait without end. A link to a missing file is not special: it is reported when it is opened.
  static bool isSpecial(const fs::directory_entry& entry) {
    std::error_code ignored;
    return !entry.is_regular_file(ignored) && entry.exists(ignored);
  }

  void addList(const std::string& name) {
    if (name == "-") {
      if (takeStandardInput()) addNames(std::cin, name);
      return;
    }
    std::ifstream names(name, std::ios::binary);
    if (names) {
      addNames(names, name);
    } else {
      list.problems.push_back({name, std::strerror(errno)});
    }
  }

  void addNames(std::istream& names, const std::string& source) {
    errno = 0;
    for (std::string name; std::getline(names, name, separator_);) {
      // A list may end its lines with CR LF.
      if (separator_ == '\n' && name.ends_with('\r')) name.pop_back();
      if (!isBlank(name)) addFileOrFolder(name);
    }
    if (names.bad()) list.problems.push_back({source, std::strerror(errno)});
  }

  // Returns whether standard input was not named before. A second reading of it would find nothing,
  // or a part of the text if another worker reads it at the same time.
  bool takeStandardInput() {
    const bool isFirst = !isStandardInputTaken_;
    isStandardInputTaken_ = true;
    if (!isFirst) list.problems.push_back({"-", "standard input can be read only once"});
    return isFirst;
  }

  // Returns whether an entry of a list is skipped: an empty one and, if line ends separate the
  // names, one of blanks and tabs only.
  bool isBlank(const std::string& name) const {
    const char* const blanks = separator_ == '\0' ? "" : " \t\r";
    return name.find_first_not_of(blanks) == std::string::npos;
  }

  char separator_;
  bool isStandardInputTaken_ = false;
};

}  // namespace

FileList listFiles(const std::vector<std::string>& arguments, NameSeparator separator) {
  FileLister lister(separator);
  for (const std::string& argument : arguments) lister.addArgument(argument);
  return std::move(lister.list);
}

}  // namespace vsa_tools
