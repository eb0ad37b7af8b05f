#include "vsa/apply/read_session.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace zn::korvo_sdk::impl {

bool ReadSession::chargeBuffer(AssignInfo& info, std::uint64_t expandedBytes) {
  const std::uint64_t bytes = info.data.payload.buffer.bytes;
  raisedBytes_ = isDefaultMemory ? std::min(bytes, expandedBytes) : 0;
  raisedBytes_ = std::min(raisedBytes_, Limits::NONE - limits.memory);
  raiseMemory(raisedBytes_);
  if (!admitsBuffer(info)) {
    lowerMemory(raisedBytes_);
    skipBuffer(info);
    return false;
  }
  charge(bytes);
  bufferBytes_ += bytes;
  return true;
}

void ReadSession::raiseMemory(std::uint64_t bytes) noexcept {
  limits.memory += bytes;
  remaining_ += bytes;
}

// If less than `bytes` remain, nothing remains.
void ReadSession::lowerMemory(std::uint64_t bytes) noexcept {
  limits.memory -= bytes;
  remaining_ -= std::min(bytes, remaining_);
}

// Lowers a default limit after a decompression. chargeBuffer raised it for the largest possible
// expansion of the text. This function lowers it again by the part that the expansion did not use.
// If the reading then exceeds the lowered limit, or its buffers exceed seven eighths of it, the
// buffer is larger than its text justifies. In this case the function reports the buffer, frees its
// memory and makes it empty.
void ReadSession::endBuffer(AssignInfo& info, std::uint64_t length) {
  const std::uint64_t notUsed = raisedBytes_ - std::min(raisedBytes_, length);
  const std::uint64_t limit = limits.memory - notUsed;
  const bool isOver = isDefaultMemory && (notUsed > remaining_ || bufferBytes_ > limit - limit / 8);
  if (isOver) dropValue();
  lowerMemory(notUsed);
  if (!isOver) return;
  bufferBytes_ -= info.data.payload.buffer.bytes;
  info.data.payload.buffer.memory = nullptr;
  refuse(Refusal::Memory, info);
  skipBuffer(info);
}

// Returns true if the buffer may be allocated. Otherwise reports the reason. If the memory limit is
// the default, buffers may take seven eighths of it. The last eighth remains for other memory, so
// that the reading can continue after a buffer was refused. If the host has set the limit, buffers
// may take all of it.
bool ReadSession::admitsBuffer(const AssignInfo& info) {
  const std::uint64_t rest = isDefaultMemory ? limits.memory / 8 : 0;
  const std::uint64_t forBuffers = limits.memory - rest;
  const std::uint64_t bytes = info.data.payload.buffer.bytes;
  if (bytes > limits.bufferBytes) {
    refuse(Refusal::BufferBytes, info);
  } else if (limits.memory != Limits::NONE && bytes > forBuffers - std::min(forBuffers, memory())) {
    refuse(Refusal::Memory, info);
  } else if (isDefaultMemory && bytes > forBuffers - std::min(forBuffers, bufferBytes_)) {
    refuse(Refusal::BuffersInAll, info);
  } else {
    return true;
  }
  return false;
}

void ReadSession::skipBuffer(AssignInfo& info) {
  BufferValue& buffer = info.data.payload.buffer;
  skippedCount_ = buffer.count;
  buffer.count = 0;
  buffer.bytes = 0;
}

// Passes the memory of the value to the input. If the node is dropped, frees the memory and makes a
// string or buffer empty. A buffer keeps its element type.
void ReadSession::transferMemory(interfaces::IInput& input, AttrData& value) {
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
    release(bytesHeldBy(input));
  }
  if (isBuffer && skipsBuffers) keepSkipped(input, *assignment_, skippedCount_);
  held_ = nullptr;
  heldBytes_ = 0;
}

std::uint64_t ReadSession::inputsOnPath() const noexcept {
  const auto isInput = [](const Token& token) { return token.type != Token::Type::Dot; };
  return static_cast<std::uint64_t>(std::count_if(path_.begin() + 1, path_.end(), isInput));
}

// Handles a charge of more than `remaining_` bytes. Throws ReadStopped if there is a limit.
// Otherwise sets `remaining_` to `bytes`, so that the subtraction in `charge` gives 0 and does not
// wrap around.
void ReadSession::overcharge(std::uint64_t bytes) {
  if (limits.memory != Limits::NONE) exceed(Budget::Memory);
  remaining_ = bytes;
}

void ReadSession::release(std::uint64_t bytes) noexcept {
  remaining_ += std::min(bytes, memory());
}

void ReadSession::freeValue() noexcept {
  std::free(std::exchange(held_, nullptr));
  release(std::exchange(heldBytes_, 0));
}

}  // namespace zn::korvo_sdk::impl
