#include "scene/model/storage/small_block_pool.h"

namespace zn::korvo_sdk {

SmallBlockPool::~SmallBlockPool() {
  for (void* const chunk : chunks_) ::operator delete(chunk);
}

// Allocates a chunk for the next blocks. The rest of the previous chunk, which is less than
// MAX_BYTES, stays unused.
void SmallBlockPool::addChunk() {
  // Adds the pointer before the chunk is allocated. Otherwise an exception of push_back would leak
  // the chunk.
  chunks_.push_back(nullptr);
  try {
    chunks_[chunks_.size - 1] = ::operator new(CHUNK_BYTES);
  } catch (...) {
    --chunks_.size;
    throw;
  }
  next_ = static_cast<std::byte*>(chunks_[chunks_.size - 1]);
  end_ = next_ + CHUNK_BYTES;
}

}  // namespace zn::korvo_sdk
