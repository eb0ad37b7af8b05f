#include "tools/vsa/common/writing/output_sink.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

namespace {

// Returns how many bytes a UTF-8 character has if it begins with the byte `first`, by the highest
// bits of that byte. The byte may be invalid in UTF-8.
std::size_t characterBytes(unsigned char first) {
  if (first >= 0xF0) return 4;
  if (first >= 0xE0) return 3;
  return first >= 0xC0 ? 2 : 1;
}

// Returns the number of bytes at the end of the text that begin a UTF-8 character and do not
// complete it.
std::size_t incompleteBytes(std::string_view text) {
  constexpr std::size_t MAX_INCOMPLETE = 3;
  for (std::size_t count = 1; count <= std::min(MAX_INCOMPLETE, text.size()); ++count) {
    const auto byte = static_cast<unsigned char>(text[text.size() - count]);
    const bool isContinuation = (byte & 0xC0) == 0x80;
    if (!isContinuation) return count < characterBytes(byte) ? count : 0;
  }
  return 0;
}

std::string printableLines(std::string_view text) {
  std::string safe;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    safe += printable(text.substr(0, end));
    if (end < text.size()) safe += '\n';
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return safe;
}

}  // namespace

std::string PrintableParts::add(std::string_view part) {
  const std::string text = std::exchange(rest_, {}).append(part);
  const std::size_t complete = text.size() - incompleteBytes(text);
  rest_ = text.substr(complete);
  return printableLines(std::string_view(text).substr(0, complete));
}

std::string PrintableParts::end() {
  return printableLines(std::exchange(rest_, {}));
}

OutputSink::OutputSink() : isTerminal_(::isatty(STDOUT_FILENO) == 1) {
}

bool OutputSink::put(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size()) return true;
  problem_ = std::string("cannot write the text: ") + std::strerror(errno);
  return false;
}

bool OutputSink::write(std::string_view text) {
  return isTerminal_ ? put(parts_.add(text)) : put(text);
}

bool OutputSink::flush() {
  if (!put(parts_.end())) return false;
  if (std::fflush(stdout) == 0) return true;
  problem_ = std::string("cannot write the text: ") + std::strerror(errno);
  return false;
}

}  // namespace vsa_tools
