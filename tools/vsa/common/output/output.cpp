#include "tools/vsa/common/output/output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "tools/scene_text/printable_text.h"
#include "tools/vsa/common/output/counted.h"

namespace vsa_tools {

void printLine(std::string_view line) {
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fputc('\n', stderr);
}

void printNotPrinted(std::string_view file, std::uint64_t count) {
  printLine(printableLine(file) + ": " + counted(count, "more diagnostic") +
            " (--max-diagnostics N prints more)");
}

bool isErrorOutputWritten() {
  return std::fflush(stderr) == 0 && std::ferror(stderr) == 0;
}

void reserveStandardDescriptors() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    const bool isClosed = ::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF;
    // open() returns the lowest free descriptor, which is `descriptor`. The null device is opened
    // for the wrong direction, so that reading or writing fails.
    if (isClosed) ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

}  // namespace vsa_tools
