#include "tools/vsa/common/output/exit_status.h"

#include "tools/scene_text/printable_text.h"
#include "tools/vsa/common/output/output.h"

namespace vsa_tools {

void printError(const std::string& text) {
  printLine("vsa: " + printableLine(text));
}

}  // namespace vsa_tools
