#include "tools/vsa/input/inspected_source.h"

#include <cstring>

namespace vsa_tools {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/// Counts in runs whose count fits a byte, so that it costs next to nothing beside the reading.
long lineEndsIn(std::string_view text) {
  constexpr std::size_t RUN = 240;
  long lineEnds = 0;
  for (std::size_t at = 0; at < text.size(); at += RUN) {
    unsigned char inRun = 0;
    for (const char c : text.substr(at, RUN))
      inRun = static_cast<unsigned char>(inRun + (c == '\n'));
    lineEnds += inRun;
  }
  return lineEnds;
}

}  // namespace

std::size_t InspectedSource::read(char* to, std::size_t capacity) {
  if (!started_) readStart();
  const std::size_t count = kept_.empty() ? readSome(to, capacity) : takeKept(to, capacity);
  return firstNul_ ? count : passUpToNul(to, count);
}

/// Collects the mark and the head, however the input is cut.
void InspectedSource::readStart() {
  started_ = true;
  char start[BYTE_ORDER_MARK.size() + HEAD_BYTES];
  std::size_t held = 0;
  while (const std::size_t count = readSome(start + held, sizeof start - held)) held += count;
  kept_.assign(start, held);
  if (kept_.starts_with(BYTE_ORDER_MARK)) kept_.erase(0, BYTE_ORDER_MARK.size());
  head_ = kept_.substr(0, HEAD_BYTES);
}

std::size_t InspectedSource::readSome(char* to, std::size_t capacity) {
  if (ended_ || capacity == 0) return 0;
  const std::size_t count = readRaw(to, capacity);
  ended_ = count == 0;
  return count;
}

std::size_t InspectedSource::takeKept(char* to, std::size_t capacity) {
  const std::size_t count = kept_.copy(to, capacity);
  kept_.erase(0, count);
  return count;
}

/// How many bytes of `block` to hand on: a NUL and what is behind it wait until the reader asks for
/// more. So a NUL is noticed when the reader comes to it, and not when it stands, unread, behind
/// what ended the reading.
std::size_t InspectedSource::passUpToNul(const char* block, std::size_t count) {
  const void* const nul = std::memchr(block, 0, count);
  const std::size_t before =
      nul == nullptr ? count : static_cast<std::size_t>(static_cast<const char*>(nul) - block);
  advance({block, before});
  if (before == count) return count;
  if (before == 0) {
    firstNul_ = next_;
    return count;
  }
  kept_.insert(0, block + before, count - before);
  return before;
}

void InspectedSource::advance(std::string_view passed) {
  const std::size_t lastLineEnd = passed.rfind('\n');
  if (lastLineEnd != std::string_view::npos) {
    next_.line += lineEndsIn(passed);
    next_.column = 1;
    passed.remove_prefix(lastLineEnd + 1);
  }
  next_.column += static_cast<long>(passed.size());
}

}  // namespace vsa_tools
