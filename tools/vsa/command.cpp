#include "tools/vsa/command.h"

#include "tools/vsa/check/check_command.h"
#include "tools/vsa/convert/convert_command.h"
#include "tools/vsa/diff/diff_command.h"
#include "tools/vsa/dump/dump_command.h"
#include "tools/vsa/explain/explain_command.h"
#include "tools/vsa/extract/extract_command.h"
#include "tools/vsa/fmt/fmt_command.h"
#include "tools/vsa/graph/graph_command.h"
#include "tools/vsa/merge/merge_command.h"
#include "tools/vsa/stats/stats_command.h"
#include "tools/vsa/tree/tree_command.h"
#include "tools/vsa/types/types_command.h"

namespace vsa_tools {

std::vector<std::unique_ptr<Command>> allCommands() {
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(std::make_unique<CheckCommand>());
  commands.push_back(std::make_unique<ExplainCommand>());
  commands.push_back(std::make_unique<DumpCommand>());
  commands.push_back(std::make_unique<ConvertCommand>());
  commands.push_back(std::make_unique<StatsCommand>());
  commands.push_back(std::make_unique<TreeCommand>());
  commands.push_back(std::make_unique<FmtCommand>());
  commands.push_back(std::make_unique<DiffCommand>());
  commands.push_back(std::make_unique<GraphCommand>());
  commands.push_back(std::make_unique<ExtractCommand>());
  commands.push_back(std::make_unique<MergeCommand>());
  commands.push_back(std::make_unique<TypesCommand>());
  return commands;
}

}  // namespace vsa_tools
