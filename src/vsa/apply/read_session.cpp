#include "vsa/apply/read_session.h"

#include <algorithm>
#include <cstdlib>

namespace zn::korvo_sdk::impl {

void ReadSession::takeBuffer(std::uint64_t bytes, std::uint64_t expandedBytes) {
  if (bytes > limits.bufferBytes) exceed(Budget::BufferBytes);
  if (literalsRaiseMemory) {
    const std::uint64_t written = std::min(bytes, expandedBytes);
    limits.memory += std::min(written, Limits::NONE - limits.memory);
  }
  charge(bytes);
}

void ReadSession::handOver(interfaces::IInput& input, const AssignInfo& info) {
  ++counts.values;
  const bool isBuffer = info.data.type == AttrType::Buffer;
  if (isBuffer || heldBytes_ >= MIN_REPLACED_BYTES) {
    memory_ -= std::min(memory_, bytesHeldBy(input));
  }
  if (isBuffer && skipsBuffers) keepSkipped(input, info);
  held_ = nullptr;
  heldBytes_ = 0;
}

void ReadSession::freeValue() noexcept {
  std::free(held_);
  memory_ -= std::min(memory_, heldBytes_);
  held_ = nullptr;
  heldBytes_ = 0;
}

}  // namespace zn::korvo_sdk::impl
