#include "tools/vsa/explain/explain_command.h"

#include "tools/vsa/check/kinds.h"
#include "tools/vsa/common/did_you_mean.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/explain/explanation.h"

namespace vsa_tools {

void ExplainCommand::addTo(CommandOptions& options) {
  options.add("ID", id_, "The id of a finding; without one, all ids are listed");
  options.footer(
      "Examples:\n"
      "  vsa explain bad-token\n"
      "  vsa explain assigned-twice\n\n"
      "Exit status:\n"
      "  0  the explanation was printed\n"
      "  2  wrong usage, an id that does not exist, or output that cannot be written");
}

int ExplainCommand::run() {
  if (id_.empty()) return printText(listOfExplanations());
  const std::string text = explanationOf(id_);
  if (!text.empty()) return printText(text);
  printError("there is no explanation of " + id_ + didYouMean(id_, explainedIds()));
  return EXIT_USAGE;
}

}  // namespace vsa_tools
