#include "tools/vsa/types/types_command.h"

#include <algorithm>

#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/types/type_collector.h"

namespace vsa_tools {

void TypesCommand::addTo(CommandOptions& options) {
  files_.addTo(options, "Files to read").required();
  reading_.addTo(options);
  options.footer(
      "The types have every input and output that the scenes use. Complete the file by hand:\n"
      "ranges, values to choose from, required inputs (docs/types.md).\n\n"
      "Examples:\n"
      "  vsa types scenes/ > types.json\n"
      "  vsa check --types types.json new.vsa\n\n"
      "Exit status:\n"
      "  0  every file was read\n"
      "  1  a file was not read completely: nothing is written\n"
      "  2  wrong usage, a file that cannot be opened, or output that cannot be written");
}

int TypesCommand::run() {
  auto [files, status] = files_.list();
  TypeCollector types;
  for (const std::string& name : files) {
    if (isInterrupted()) return EXIT_INTERRUPTED;
    TypedScene scene;
    const SceneFile file = readAndReport(name, reading_, &scene);
    status = std::max(status, file.exitStatus);
    if (file.exitStatus == EXIT_READ) types.add(scene);
  }
  return status == EXIT_READ ? printText(types.json()) : status;
}

}  // namespace vsa_tools
