// Blocks: where the short lists, tuples and strings of a scene live. A scene has millions of them,
// of a few bytes each: cut from large chunks they cost no allocation and no header.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>

#include <vsa/foundation/api.h>
#include <vsa/foundation/vector.h>

namespace zn::korvo_sdk {

/// Memory in short blocks. One that is given back serves the next of about its size; all go at
/// once, with this.
class VSA_API Blocks {
 public:
  /// Of the longest block.
  static constexpr std::size_t MOST_BYTES = 4096;
  /// Of the shortest block, and what every length is a multiple of.
  static constexpr std::size_t STEP = 8;

  Blocks() = default;
  Blocks(const Blocks&) = delete;
  Blocks& operator=(const Blocks&) = delete;
  ~Blocks();

  /// How many bytes a block for `bytes` really has. Eight sizes from one power of two to the next:
  /// a value that grows and grows leaves a block of each size behind, and these may not add up to
  /// more than some twelve times the last one.
  static constexpr std::size_t roomFor(std::size_t bytes) noexcept {
    const std::size_t step = std::max(STEP, std::bit_floor(bytes - 1) / 8);
    return (bytes + step - 1) & ~(step - 1);  // a power of two
  }

  /// A block for 1 to MOST_BYTES bytes, uninitialised, on a multiple of 8. Throws std::bad_alloc;
  /// nothing is changed then.
  void* take(std::size_t bytes) {
    const std::size_t room = roomFor(bytes);
    Free*& first = free_[room / STEP];
    if (first != nullptr) {
      void* const block = first;
      first = first->next;
      return block;
    }
    if (static_cast<std::size_t>(end_ - at_) < room) addChunk();
    void* const block = at_;
    at_ += room;
    return block;
  }

  /// Gives a block back that was taken for `bytes`.
  void giveBack(void* block, std::size_t bytes) noexcept {
    Free*& first = free_[roomFor(bytes) / STEP];
    first = new (block) Free{first};
  }

 private:
  struct Free {
    Free* next;
  };

  static constexpr std::size_t CHUNK_BYTES = std::size_t{1} << 16;
  static_assert(sizeof(Free) <= STEP && alignof(Free) <= STEP);

  void addChunk();

  std::byte* at_ = nullptr;  // the rest of the chunk at hand
  std::byte* end_ = nullptr;
  ds::Vector<void*> chunks_;
  Free* free_[MOST_BYTES / STEP + 1] = {};
};

}  // namespace zn::korvo_sdk
