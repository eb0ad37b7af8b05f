#include "tools/vsa/common/writing/output_sink.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

std::string safeLines(std::string_view text) {
  std::string safe;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    safe += printable(text.substr(0, end));
    if (end < text.size()) safe += '\n';
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return safe;
}

OutputSink::OutputSink() : isTerminal_(::isatty(STDOUT_FILENO) == 1) {
}

bool OutputSink::fail() {
  problem_ = std::string("cannot write the text: ") + std::strerror(errno);
  return false;
}

bool OutputSink::write(std::string_view text) {
  const std::string safe = isTerminal_ ? safeLines(text) : std::string();
  if (isTerminal_) text = safe;
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() || fail();
}

bool OutputSink::flush() {
  return std::fflush(stdout) == 0 || fail();
}

}  // namespace vsa_tools
