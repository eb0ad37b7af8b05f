// NamedList: things with a name, in creation order: the inputs and outputs of a node, the members
// of an object. A short list is scanned, a long one has an index.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>

#include <vsa/foundation/string.h>
#include "foundation/containers/hash_index.h"
#include "scene/model/storage/small_block_pool.h"

namespace zn::korvo_sdk {

/// Holds pointers; what they point to belongs to the scene. T answers `name()`.
template <class T>
class NamedList {
 public:
  NamedList() = default;
  NamedList(const NamedList&) = delete;
  NamedList& operator=(const NamedList&) = delete;
  ~NamedList() {
    if (!isBlock(room_)) std::free(things_);
  }

  std::uint64_t count() const noexcept { return count_; }
  /// The i-th, in creation order; `i` is below `count`.
  T* at(std::uint64_t i) const noexcept { return things_[i]; }

  /// The one of that name, or null.
  T* find(const String& name) const noexcept {
    if (index_ != nullptr) {
      const auto isNamed = [&](std::uint64_t i) { return things_[i]->name() == name; };
      const std::uint64_t at = index_->find(name.hash(), isNamed);
      return at == ds::HashIndex::NONE ? nullptr : things_[at];
    }
    for (std::uint32_t i = 0; i < count_; ++i) {
      if (things_[i]->name() == name) return things_[i];
    }
    return nullptr;
  }

  /// Appends one whose name is not in the list yet; `blocks` are those of the scene. Throws
  /// std::bad_alloc and changes nothing when there is no room.
  void append(T* thing, Blocks& blocks) {
    if (count_ == SCANNED && index_ == nullptr) index_ = indexOfAll();
    if (count_ == room_) grow(blocks);
    if (index_ != nullptr) index_->insert(thing->name().hash(), count_);
    things_[count_++] = thing;
  }

 private:
  // Up to this many, a scan is the faster way.
  static constexpr std::uint32_t SCANNED = 8;

  static constexpr std::size_t bytesFor(std::uint32_t count) noexcept { return count * sizeof(T*); }
  static constexpr bool isBlock(std::uint32_t room) noexcept {
    return bytesFor(room) <= Blocks::MOST_BYTES;
  }

  // To 2, or to twice as many.
  void grow(Blocks& blocks) {
    if (room_ > std::numeric_limits<std::uint32_t>::max() / 2) throw std::bad_alloc();
    const std::uint32_t room = room_ == 0 ? 2 : 2 * room_;
    void* const memory = isBlock(room) ? blocks.take(bytesFor(room)) : std::malloc(bytesFor(room));
    if (memory == nullptr) throw std::bad_alloc();
    T** const grown = static_cast<T**>(memory);
    std::copy_n(things_, count_, grown);
    if (!isBlock(room_)) {
      std::free(things_);
    } else if (room_ != 0) {
      blocks.giveBack(things_, bytesFor(room_));
    }
    things_ = grown;
    room_ = room;
  }

  std::unique_ptr<ds::HashIndex> indexOfAll() const {
    auto index = std::make_unique<ds::HashIndex>();
    for (std::uint32_t i = 0; i < count_; ++i) index->insert(things_[i]->name().hash(), i);
    return index;
  }

  T** things_ = nullptr;  // a block of the scene; a long list has memory of its own
  std::uint32_t count_ = 0;
  std::uint32_t room_ = 0;
  std::unique_ptr<ds::HashIndex> index_;  // of all of them, once there are more than SCANNED
};

}  // namespace zn::korvo_sdk
