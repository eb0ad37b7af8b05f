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

// A node that is not kept gets values of each type without their memory.
void ReadSession::handOver(interfaces::IInput& input, AttrData& value) {
  if (isDropped_) {
    if (value.type == AttrType::Buffer) {
      value.payload.buffer = {nullptr, 0, 0, value.payload.buffer.type, 0};
    } else if (value.type == AttrType::String) {
      value.payload.string = nullptr;
    }
    return dropValue();
  }
  ++counts.values;
  const bool isBuffer = value.type == AttrType::Buffer;
  if (isBuffer || heldBytes_ >= MIN_REPLACED_BYTES) {
    memory_ -= std::min(memory_, bytesHeldBy(input));
  }
  if (isBuffer && skipsBuffers) keepSkipped(input, *assignment_);
  held_ = nullptr;
  heldBytes_ = 0;
}

std::uint64_t ReadSession::inputsOnPath() const noexcept {
  std::uint64_t inputs = 0;
  for (const Token& token : path_) inputs += token.type != Token::Type::Dot ? 1 : 0;
  return path_[0].type == Token::Type::Dot ? inputs : inputs - 1;
}

void ReadSession::freeValue() noexcept {
  std::free(held_);
  memory_ -= std::min(memory_, heldBytes_);
  held_ = nullptr;
  heldBytes_ = 0;
}

}  // namespace zn::korvo_sdk::impl
