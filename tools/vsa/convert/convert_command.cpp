#include "tools/vsa/convert/convert_command.h"

#include <optional>

#include <vsa/scene.h>
#include "tools/vsa/common/file_diagnostics.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/read_scene.h"
#include "tools/vsa/convert/types_file.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

void ConvertCommand::addTo(CommandOptions& options) {
  options.add("FILE", file_, "File to read; - is standard input").required();
  writing_.addTo(options);
  options
      .add("--types", types_,
           "Declare the node types of this file (docs/types.md) first, which renames the inputs "
           "and outputs that have former names")
      .valueName("FILE");
  reading_.addTo(options);
  options.footer(
      "Examples:\n"
      "  vsa convert scene.vsa -o copy.vsa\n"
      "  vsa convert --compress textures.vsa -o textures.vsa\n"
      "  vsa convert --types types.json old.vsa -o new.vsa\n"
      "  vsa convert --by-name --full-paths - <a.vsa | less\n\n"
      "Exit status:\n"
      "  0  the text was written\n"
      "  1  the file was not read completely, or no text can carry its scene\n"
      "  2  wrong usage, a file that cannot be opened, or output that cannot be written");
}

int ConvertCommand::run() {
  if (types_ == "-" && file_ == "-") {
    printError("standard input can be read only once");
    return EXIT_USAGE;
  }
  if (!types_.empty() && !declareTypesOf(types_)) return EXIT_USAGE;
  vsa::Scene scene;
  FileDiagnostics diagnostics(shownName(file_), reading_);
  const std::optional<FileOutcome> outcome = readScene(scene, file_, diagnostics.options());
  if (outcome) diagnostics.add(*outcome);
  if (isInterrupted()) return EXIT_INTERRUPTED;
  if (!outcome) return EXIT_USAGE;
  if (outcome->isComplete()) return writing_.write(scene, file_);
  printError(shownName(file_) + ": nothing was written, because the file was not read completely");
  return EXIT_NOT_READ;
}

}  // namespace vsa_tools
