#include "tools/vsa/input/inspected_source.h"

#include <utf8.h>
#include <cstring>

namespace vsa_tools {

namespace {

/// Counts the line ends in blocks whose count fits into a byte, because the compiler vectorises
/// that best. With std::count, this took 6 to 8 % of the time of a dump. Now it takes 0.5 %.
long lineEndsIn(std::string_view text) {
  constexpr std::size_t BLOCK = 240;
  long lineEnds = 0;
  for (std::size_t at = 0; at < text.size(); at += BLOCK) {
    unsigned char inBlock = 0;
    for (const char c : text.substr(at, BLOCK)) {
      inBlock = static_cast<unsigned char>(inBlock + (c == '\n'));
    }
    lineEnds += inBlock;
  }
  return lineEnds;
}

}  // namespace

std::size_t InspectedSource::read(std::span<char> to) {
  readHead();
  const std::size_t count =
      pending_.empty() ? readSome(to.data(), to.size()) : readPending(to.data(), to.size());
  isAtEnd_ = count == 0;
  return firstNul_ ? count : splitAtNul(to.data(), count);
}

/// Reads the byte order mark and the head, in as many reads as necessary.
void InspectedSource::readHead() {
  if (started_) return;
  started_ = true;
  char start[sizeof utf8::bom + HEAD_BYTES];
  std::size_t size = 0;
  while (const std::size_t count = readSome(start + size, sizeof start - size)) size += count;
  pending_.assign(start, size);
  if (utf8::starts_with_bom(pending_)) pending_.erase(0, sizeof utf8::bom);
  head_ = pending_.substr(0, HEAD_BYTES);
}

std::size_t InspectedSource::readSome(char* to, std::size_t capacity) {
  if (ended_ || capacity == 0) return 0;
  const std::size_t count = readRaw(to, capacity);
  ended_ = count == 0;
  return count;
}

std::size_t InspectedSource::readPending(char* to, std::size_t capacity) {
  const std::size_t count = pending_.copy(to, capacity);
  pending_.erase(0, count);
  return count;
}

/// Returns the number of bytes of `block` to deliver in this read. If the block begins with a NUL,
/// sets firstNul_ and delivers the whole block. If a NUL is farther behind, delivers the bytes
/// before it and puts the others back into `pending_`. Thus firstNul() is set only when the reader
/// reads past the bytes before the NUL.
std::size_t InspectedSource::splitAtNul(const char* block, std::size_t count) {
  const void* const nul = std::memchr(block, 0, count);
  const std::size_t before =
      nul == nullptr ? count : static_cast<std::size_t>(static_cast<const char*>(nul) - block);
  advance({block, before});
  if (before == count) return count;
  if (before == 0) {
    firstNul_ = next_;
    return count;
  }
  pending_.insert(0, block + before, count - before);
  return before;
}

void InspectedSource::advance(std::string_view bytes) {
  const std::size_t lastLineEnd = bytes.rfind('\n');
  if (lastLineEnd != std::string_view::npos) {
    next_.line += lineEndsIn(bytes);
    next_.column = 1;
    bytes.remove_prefix(lastLineEnd + 1);
  }
  next_.column += static_cast<long>(bytes.size());
}

}  // namespace vsa_tools
