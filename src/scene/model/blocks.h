// Blocks: where the short lists, tuples and strings of a scene live. A scene has millions of them,
// of a few bytes each: cut from large chunks they cost no allocation and no header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "foundation/vector.h"

namespace zn::korvo_sdk {

/// Memory in short blocks. One that is given back serves the next of about its size; all go at
/// once, with this.
class Blocks {
 public:
  /// Of the longest block.
  static constexpr std::size_t MOST_BYTES = 4096;

  Blocks() = default;
  Blocks(const Blocks&) = delete;
  Blocks& operator=(const Blocks&) = delete;
  ~Blocks();

  /// How many bytes a block for `bytes` really has.
  static constexpr std::size_t roomFor(std::size_t bytes) noexcept {
    return (bytes + STEP - 1) / STEP * STEP;
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

  static constexpr std::size_t STEP = 8;
  static constexpr std::size_t CHUNK_BYTES = std::size_t{1} << 16;
  static_assert(sizeof(Free) <= STEP && alignof(Free) <= STEP);

  void addChunk();

  std::byte* at_ = nullptr;  // the rest of the chunk at hand
  std::byte* end_ = nullptr;
  ds::Vector<void*> chunks_;
  Free* free_[MOST_BYTES / STEP + 1] = {};
};

}  // namespace zn::korvo_sdk
