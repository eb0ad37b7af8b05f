#include "tools/vsa/common/output/standard_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "tools/vsa/common/output/exit_status.h"

namespace vsa_tools {

int printText(std::string_view text) {
  TextOutput out(stdout);
  out.put(text);
  return finish(out);
}

int finish(TextOutput& out) {
  if (out.flush()) return EXIT_READ;
  printError(std::string("cannot write: ") + std::strerror(errno));
  return EXIT_USAGE;
}

}  // namespace vsa_tools
