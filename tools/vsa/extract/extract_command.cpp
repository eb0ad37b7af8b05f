#include "tools/vsa/extract/extract_command.h"

#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/extract/scene_part.h"

namespace vsa_tools {

void ExtractCommand::addTo(CommandOptions& options) {
  options.add("FILE", file_, "File to read; - is standard input").required();
  options.add("NAME", names_, "Nodes to write; patterns with * and ?").required();
  options
      .add("--without", without_,
           "Leave out these nodes, and what only they need; links to them become null")
      .valueName("PATTERN")
      .repeatable();
  writing_.addTo(options);
  reading_.addTo(options);
  options.footer(
      "Examples:\n"
      "  vsa extract scene.vsa vase -o vase.vsa\n"
      "  vsa extract --without 'tex*' scene.vsa 'clay*' glaze\n"
      "\n"
      "Exit status:\n"
      "  0  the text was written\n"
      "  1  the file was not read completely, or a NAME matches no node: nothing is written\n"
      "  2  wrong usage, a file that cannot be opened, or output that cannot be written");
}

int ExtractCommand::run() {
  SceneFile file = readAndReport(file_, reading_);
  if (file.exitStatus == EXIT_USAGE || file.exitStatus == EXIT_INTERRUPTED) return file.exitStatus;
  if (file.exitStatus != EXIT_READ) {
    printError(file.name + ": nothing was written, because the file was not read completely");
    return EXIT_NOT_READ;
  }
  const std::vector<std::string> missing = keepPart(file.result.scene, names_, without_);
  for (const std::string& name : missing) printError(file.name + ": no node is named " + name);
  if (!missing.empty()) return EXIT_NOT_READ;
  removeEmptyArrays(file.result.scene);
  removeBadComments(file.result.scene);
  return writing_.write(file.result.scene, file_);
}

}  // namespace vsa_tools
