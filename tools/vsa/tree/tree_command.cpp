#include "tools/vsa/tree/tree_command.h"

#include <algorithm>
#include <cstdio>

#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/common/scene/scene_file.h"

namespace vsa_tools {

void TreeCommand::addTo(CommandOptions& options) {
  options.add("FILE", file_, "File to read; - is standard input").required();
  options.addFlag("-i,--inputs", options_.inputs, "Show the values of inputs, too");
  options.add("--depth", options_.depth, "Follow at most N links below a root")
      .valueName("N")
      .notNegative();
  options.add("--name", options_.names, "Begin at the nodes with these names")
      .valueName("PATTERN")
      .repeatable();
  options.add("--type", options_.types, "Begin at the nodes of these types")
      .valueName("PATTERN")
      .repeatable();
  reading_.addTo(options);
  options.footer(
      "Patterns have * for any characters and ? for one byte.\n\n"
      "Examples:\n"
      "  vsa tree scene.vsa\n"
      "  vsa tree --inputs --name 'clay*' scene.vsa\n"
      "  vsa tree --type mesh --depth 1 scene.vsa\n\n"
      "Exit status:\n"
      "  0  the file was read\n"
      "  1  it was not read completely, or no node matches\n"
      "  2  wrong usage, a file that cannot be opened, or output that cannot be written");
}

int TreeCommand::run() {
  const SceneFile file = readAndReport(file_, reading_);
  if (file.exitStatus == EXIT_USAGE) return EXIT_USAGE;
  TextOutput out(stdout);
  const std::uint64_t roots = printTree(file.result.scene, options_, out);
  const int written = finish(out);
  const bool chooses = !options_.names.empty() || !options_.types.empty();
  // After Ctrl-C, a node with such a name may be missing.
  if (roots > 0 || !chooses || isInterrupted()) return std::max(file.exitStatus, written);
  printError(file.name + ": no node has such a name and type");
  return std::max<int>(EXIT_NOT_READ, written);
}

}  // namespace vsa_tools
