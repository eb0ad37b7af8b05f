// Measures the peak memory of a read. The program starts itself with PEAK_OPTION. The child process
// reads the text and prints the peak of its resident memory (VmHWM) minus its resident memory
// before the read.
#include "bench/measure/memory.h"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>

#include "tests/support/text.h"

namespace bench {
namespace {

constexpr char PEAK_OPTION[] = "--peak-of-read";

// Returns a value of /proc/self/status in bytes.
size_t statusLine(const char* name) {
  std::FILE* const file = std::fopen("/proc/self/status", "r");
  if (file == nullptr) throw std::runtime_error("cannot read /proc/self/status");
  char line[256];
  size_t kilobytes = 0;
  while (std::fgets(line, sizeof line, file) != nullptr) {
    if (std::strncmp(line, name, std::strlen(name)) == 0) {
      kilobytes = std::strtoull(line + std::strlen(name), nullptr, 10);
    }
  }
  std::fclose(file);
  return 1024 * kilobytes;
}

// Sets VmHWM to the current resident memory.
void resetPeak() {
  std::FILE* const file = std::fopen("/proc/self/clear_refs", "w");
  if (file == nullptr || std::fputs("5", file) < 0 || std::fclose(file) != 0) {
    throw std::runtime_error("cannot write /proc/self/clear_refs");
  }
}

// The argument that passes the Route to the child process, for each Route in order.
constexpr const char* ROUTES[] = {"string", "file", "text", "path"};

size_t measure(Route route, const char* path) {
  const bool isInMemory = route == Route::String || route == Route::Text;
  const zn::String text = isInMemory ? vsa_tests::string(vsa_tests::contentOf(path)) : zn::String();
  malloc_trim(0);
  resetPeak();
  const size_t before = statusLine("VmRSS:");
  zn::korvo_sdk::Scene scene;
  switch (route) {
    case Route::String:
      readString(scene, text);
      break;
    case Route::File:
      readFile(scene, path);
      break;
    case Route::Text:
      readText(scene, text.view());
      break;
    case Route::Path:
      readPath(scene, path);
      break;
  }
  return statusLine("VmHWM:") - before;
}

}  // namespace

size_t peakOfRead(const std::string& path, Route route) {
  const std::string command = std::string("exec /proc/$PPID/exe ") + PEAK_OPTION + ' ' +
                              ROUTES[static_cast<size_t>(route)] + " '" + path + "'";
  std::FILE* const output = popen(command.c_str(), "r");
  unsigned long long bytes = 0;
  const bool isRead = output != nullptr && std::fscanf(output, "%llu", &bytes) == 1;
  if (output == nullptr || pclose(output) != 0 || !isRead) {
    throw std::runtime_error("cannot measure the memory of reading " + path);
  }
  return bytes;
}

bool handlePeakRequest(int argc, char** argv) {
  if (argc != 4 || std::strcmp(argv[1], PEAK_OPTION) != 0) return false;
  size_t route = 0;
  while (route + 1 < std::size(ROUTES) && std::strcmp(argv[2], ROUTES[route]) != 0) ++route;
  std::printf("%zu\n", measure(static_cast<Route>(route), argv[3]));
  return true;
}

}  // namespace bench
