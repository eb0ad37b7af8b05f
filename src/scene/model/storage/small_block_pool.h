// SmallBlockPool: memory for the short lists, tuples and strings of a scene. A scene may have
// millions of these objects. The pool divides large chunks into blocks, which saves an allocation
// and a header for each block: 27 % of the time of the benchmark nodes 100k, 40 % of short.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <new>

#include <vsa/foundation/api.h>
#include <vsa/foundation/vector.h>
#include "foundation/base/block_size.h"

namespace zn::korvo_sdk {

/// Allocates blocks of up to MAX_BYTES bytes. Reuses a deallocated block for the next block of the
/// same size class. The destructor frees all memory.
class VSA_API SmallBlockPool {
 public:
  static constexpr std::size_t MAX_BYTES = 4096;
  /// The size of the smallest block in bytes. The capacity of every block is a multiple of
  /// ALIGNMENT.
  static constexpr std::size_t ALIGNMENT = 8;

  SmallBlockPool() = default;
  SmallBlockPool(const SmallBlockPool&) = delete;
  SmallBlockPool& operator=(const SmallBlockPool&) = delete;
  ~SmallBlockPool();

  /// Returns the size class of `bytes`: the size of the block to allocate. `bytes` must be from 1
  /// to MAX_BYTES. There are at most eight size classes between two powers of two, and fewer below
  /// 64 bytes. A list that grows in small steps deallocates one block of each smaller class.
  /// Together, these blocks take at most about twelve times the final size of the list. More
  /// classes would increase this factor.
  static constexpr std::size_t capacityFor(std::size_t bytes) noexcept {
    const std::size_t step = std::max(ALIGNMENT, std::bit_floor(bytes) / 8);
    // `step` is a power of two.
    return (bytes + step - 1) & ~(step - 1);
  }

  /// Returns an uninitialised block for `bytes` bytes, aligned to ALIGNMENT. `bytes` must be from 1
  /// to MAX_BYTES. If it throws std::bad_alloc, nothing changes.
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

  /// Frees a block. `bytes` must be the number that was passed to `allocate`.
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

  // The unused bytes of the last chunk, from `next_` to `end_`.
  std::byte* next_ = nullptr;
  std::byte* end_ = nullptr;
  ds::Vector<void*> chunks_;
  // The first free block of each size class. The index is capacity / ALIGNMENT.
  FreeBlock* freeBlocks_[MAX_BYTES / ALIGNMENT + 1] = {};
};

}  // namespace zn::korvo_sdk
