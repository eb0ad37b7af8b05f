#include "tools/vsa/common/standard_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/vsa/common/exit_status.h"

namespace vsa_tools {

int printText(std::string_view text) {
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (isWritten && std::fflush(stdout) == 0) return EXIT_READ;
  printError(std::string("cannot write: ") + std::strerror(errno));
  return EXIT_USAGE;
}

}  // namespace vsa_tools
