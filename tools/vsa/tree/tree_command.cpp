#include "tools/vsa/tree/tree_command.h"

#include <algorithm>
#include <cstdio>

#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/common/scene/scene_file.h"

namespace vsa_tools {

void TreeCommand::addTo(CLI::App& app) {
  app.add_option("FILE", file_, "File to read; - is standard input")->required()->type_name("");
  app.add_flag("-i,--inputs", options_.inputs, "Show the values of inputs, too");
  app.add_option("--depth", options_.depth, "Follow at most N links below a root")
      ->type_name("N")
      ->check(CLI::NonNegativeNumber);
  app.add_option("--name", options_.names, "Begin at the nodes with these names")
      ->type_name("PATTERN")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  app.add_option("--type", options_.types, "Begin at the nodes of these types")
      ->type_name("PATTERN")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  reading_.addTo(app);
  app.footer(
      "Patterns have * for any characters and ? for one byte. Exit status 1 also if no node "
      "matches.\n"
      "Examples:\n"
      "  vsa tree scene.vsa\n"
      "  vsa tree --inputs --name 'clay*' scene.vsa\n"
      "  vsa tree --type mesh --depth 1 scene.vsa");
}

int TreeCommand::run() {
  const InterruptScope interrupts;
  const SceneFile file = readAndReport(file_, reading_);
  if (file.exitStatus == EXIT_USAGE) return EXIT_USAGE;
  TextOutput out(stdout);
  const std::uint64_t roots = printTree(file.result.scene, options_, out);
  const int written = finish(out);
  const bool chooses = !options_.names.empty() || !options_.types.empty();
  if (roots > 0 || !chooses) return std::max(file.exitStatus, written);
  printError(file.name + ": no node has such a name and type");
  return std::max<int>(EXIT_NOT_READ, written);
}

}  // namespace vsa_tools
