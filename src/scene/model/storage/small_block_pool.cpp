#include "scene/model/storage/small_block_pool.h"

namespace zn::korvo_sdk {

Blocks::~Blocks() {
  for (void* const chunk : chunks_) ::operator delete(chunk);
}

// What is left of the chunk at hand is given up: it is less than the longest block.
void Blocks::addChunk() {
  chunks_.push_back(nullptr);  // room first: a chunk in hand must not be lost
  try {
    chunks_[chunks_.size - 1] = ::operator new(CHUNK_BYTES);
  } catch (...) {
    --chunks_.size;
    throw;
  }
  at_ = static_cast<std::byte*>(chunks_[chunks_.size - 1]);
  end_ = at_ + CHUNK_BYTES;
}

}  // namespace zn::korvo_sdk
