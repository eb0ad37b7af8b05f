#include "tools/vsa/common/files/file_arguments.h"

#include "tools/vsa/common/files/jobs.h"
#include "tools/vsa/common/output/exit_status.h"

namespace vsa_tools {

CommandOption FileArguments::addTo(CommandOptions& options, const std::string& purpose) {
  const std::string help = purpose +
                           "; a folder: all *.vsa in it; @LIST: the files that LIST names; "
                           "-: standard input";
  const CommandOption files = options.add("FILES", arguments_, help.c_str());
  options.addFlag("-0,--null", isNulSeparated_,
                  "The names in a LIST end with a NUL, not with a line end");
  return files;
}

void FileArguments::addJobsTo(CommandOptions& options) {
  addJobs(options, workers_);
}

ListedFiles FileArguments::list(const std::vector<std::string>& byDefault) const {
  const FileList list = listFiles(arguments_.empty() ? byDefault : arguments_, separator());
  for (const FileListProblem& problem : list.problems) {
    printError(problem.name + ": " + problem.text);
  }
  return {list.files, list.problems.empty() ? EXIT_READ : EXIT_USAGE};
}

NameSeparator FileArguments::separator() const {
  return isNulSeparated_ ? NameSeparator::Nul : NameSeparator::LineEnd;
}

unsigned FileArguments::workers() const {
  return workersFor(workers_);
}

}  // namespace vsa_tools
