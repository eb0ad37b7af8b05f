#include "scene/model/storage/small_block_pool.h"

namespace zn::korvo_sdk {

SmallBlockPool::~SmallBlockPool() {
  for (void* const chunk : chunks_) ::operator delete(chunk);
}

// Allocates a chunk for the next blocks. The rest of the previous chunk, which is less than
// MAX_BYTES, stays unused.
void SmallBlockPool::addChunk() {
  // Reserves memory for the pointer first, so that push_back cannot throw and leak the chunk.
  chunks_.reserveAdditional(1);
  next_ = static_cast<std::byte*>(::operator new(CHUNK_BYTES));
  chunks_.push_back(next_);
  end_ = next_ + CHUNK_BYTES;
}

}  // namespace zn::korvo_sdk
