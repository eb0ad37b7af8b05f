#include "api/reading/text/text_store.h"

#include <algorithm>

namespace vsa {

std::string_view MemoryText::bytes(std::uint64_t offset, std::size_t count) {
  const auto start = static_cast<std::size_t>(std::min<std::uint64_t>(offset, text_.size()));
  return text_.substr(start, count);
}

std::string_view FileText::bytes(std::uint64_t offset, std::size_t count) {
  const bool isBuffered =
      offset >= bufferOffset_ && offset + count <= bufferOffset_ + buffer_.size();
  if (!isBuffered) {
    bufferOffset_ = offset;
    buffer_.resize(std::max(count, MIN_READ_BYTES));
    buffer_.resize(source_.readAt(offset, buffer_.data(), buffer_.size()));
  }
  const auto start = static_cast<std::size_t>(offset - bufferOffset_);
  return std::string_view(buffer_).substr(start, count);
}

std::string_view KeptText::bytes(std::uint64_t offset, std::size_t count) {
  if (offset < keptOffset_) return {};
  const auto start = static_cast<std::size_t>(offset - keptOffset_);
  if (start >= kept_.size()) {
    return block_.substr(std::min(start - kept_.size(), block_.size()), count);
  }
  const std::string_view first = std::string_view(kept_).substr(start, count);
  if (first.size() == count) return first;
  joined_.assign(first).append(block_.substr(0, count - first.size()));
  return joined_;
}

void KeptText::keepBlock() {
  kept_.append(block_);
  block_ = {};
  if (kept_.size() <= 2 * KEPT_BYTES) return;
  const std::size_t surplus = kept_.size() - KEPT_BYTES;
  kept_.erase(0, surplus);
  keptOffset_ += surplus;
}

void KeptText::addBlock(std::string_view block) noexcept {
  block_ = block;
}

}  // namespace vsa
