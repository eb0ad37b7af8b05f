#include "tools/vsa/common/exit_status.h"

#include <cstdio>

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

void printError(const std::string& text) {
  std::fprintf(stderr, "vsa: %s\n", printable(text).c_str());
}

}  // namespace vsa_tools
