// SmallBlockPool: memory for the short lists, tuples and strings of a scene. A scene has millions
// of them. Cutting blocks from large chunks saves an allocation and a header for each block.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>

#include <vsa/foundation/api.h>
#include <vsa/foundation/vector.h>
#include "foundation/base/block_size.h"

namespace zn::korvo_sdk {

/// Allocates blocks of up to MAX_BYTES. Reuses a deallocated block for the next block of its size
/// class. The destructor frees all memory.
class VSA_API SmallBlockPool {
 public:
  static constexpr std::size_t MAX_BYTES = 4096;
  /// The size of the smallest block in bytes. Every block's capacity is a multiple of it.
  static constexpr std::size_t ALIGNMENT = 8;

  SmallBlockPool() = default;
  SmallBlockPool(const SmallBlockPool&) = delete;
  SmallBlockPool& operator=(const SmallBlockPool&) = delete;
  ~SmallBlockPool();

  /// The size class of `bytes`: the size of the block that is allocated for them. There are eight
  /// classes between two powers of two. A list that grows step by step deallocates one block of
  /// each smaller class. With eight classes, these blocks take at most about twelve times the final
  /// size of the list.
  static constexpr std::size_t capacityFor(std::size_t bytes) noexcept {
    const std::size_t step = std::max(ALIGNMENT, std::bit_floor(bytes - 1) / 8);
    return (bytes + step - 1) & ~(step - 1);  // step is a power of two
  }

  /// A block for 1 to MAX_BYTES bytes, uninitialised, aligned to ALIGNMENT. Throws std::bad_alloc;
  /// then nothing has changed.
  void* allocate(std::size_t bytes) {
    const std::size_t capacity = capacityFor(bytes);
    FreeBlock*& first = freeBlocks_[capacity / ALIGNMENT];
    if (first != nullptr) {
      void* const block = first;
      first = first->next;
      return block;
    }
    if (static_cast<std::size_t>(end_ - next_) < capacity) addChunk();
    void* const block = next_;
    next_ += capacity;
    return block;
  }

  /// Frees a block that was allocated for `bytes`.
  void deallocate(void* block, std::size_t bytes) noexcept {
    FreeBlock*& first = freeBlocks_[capacityFor(bytes) / ALIGNMENT];
    first = new (block) FreeBlock{first};
  }

 private:
  struct FreeBlock {
    FreeBlock* next;
  };

  static constexpr std::size_t CHUNK_BYTES = detail::blockBytes(std::size_t{1} << 16);
  static_assert(sizeof(FreeBlock) <= ALIGNMENT && alignof(FreeBlock) <= ALIGNMENT);

  void addChunk();

  std::byte* next_ = nullptr;  // the unused rest of the last chunk
  std::byte* end_ = nullptr;
  ds::Vector<void*> chunks_;
  FreeBlock* freeBlocks_[MAX_BYTES / ALIGNMENT + 1] = {};  // the index is capacity / ALIGNMENT
};

}  // namespace zn::korvo_sdk
