#include "tools/vsa/types/types_command.h"

#include <algorithm>

#include "tools/vsa/common/files/file_list.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/types/type_collector.h"

namespace vsa_tools {

void TypesCommand::addTo(CommandOptions& options) {
  options.add("FILE", files_, "Files and folders to read, @LIST for a list of them").required();
  reading_.addTo(options);
  options.footer(
      "The types have every input and output that the scenes use. Complete the file by hand:\n"
      "ranges, values to choose from, required inputs (docs/types.md).\n\n"
      "Examples:\n"
      "  vsa types scenes/ > types.json\n"
      "  vsa check --types types.json new.vsa\n\n"
      "Exit status: 0 if all files were read; 1 if one has an error: nothing is written;\n"
      "2 for wrong usage and unreadable files.");
}

int TypesCommand::run() {
  const FileList list = listFiles(files_);
  int status = EXIT_READ;
  for (const FileListProblem& problem : list.problems) {
    printError(problem.name + ": " + problem.text);
    status = EXIT_USAGE;
  }
  TypeCollector types;
  for (const std::string& name : list.files) {
    const SceneFile file = readAndReport(name, reading_);
    status = std::max(status, file.exitStatus);
    if (file.exitStatus == EXIT_READ) types.add(file.result.scene);
  }
  return status == EXIT_READ ? printText(types.json()) : status;
}

}  // namespace vsa_tools
