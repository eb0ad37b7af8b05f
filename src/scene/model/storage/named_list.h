// NamedList: named objects in creation order, such as the inputs of a node or the members of an
// object. A look-up scans a short list. For a long list it uses a hash index.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <string_view>

#include <vsa/foundation/string.h>
#include "foundation/containers/hash_index.h"
#include "scene/model/storage/small_block_pool.h"

namespace zn::korvo_sdk {

/// A list of pointers to objects. The scene owns the objects. T must have the functions `name()`
/// and `isNamed(name, hash)`.
///
/// The list itself takes 16 bytes, so that a node fits into a cache line. The pointers are in a
/// separate block. A block of up to SmallBlockPool::MAX_BYTES bytes is from the pool. A larger
/// block is from malloc. The capacity determines the content of the block:
///
///   | capacity          | content                                |
///   | up to MAX_SCANNED | the pointers                           |
///   | larger            | a HashIndex*, followed by the pointers |
template <class T>
class NamedList {
 public:
  NamedList() = default;
  NamedList(const NamedList&) = delete;
  NamedList& operator=(const NamedList&) = delete;
  /// Frees the index and the memory from malloc. The pool frees its own memory, and must outlive
  /// the list.
  ~NamedList() {
    if (hasIndex(capacity_)) delete index();
    if (!isInPool(capacity_)) std::free(memoryOf(items_, capacity_));
  }

  std::uint64_t count() const noexcept { return count_; }
  /// Returns the object at index `i` in creation order. `i` must be less than `count()`.
  T* at(std::uint64_t i) const noexcept { return items_[i]; }

  /// Returns the object of that name, or null.
  T* find(const String& name) const noexcept {
    if (hasIndex(capacity_)) return findInIndex(name);
    const std::uint64_t hash = name.hash();
    for (std::uint32_t i = 0; i < count_; ++i) {
      if (items_[i]->isNamed(name, hash)) return items_[i];
    }
    return nullptr;
  }

  /// Like the function above, for a name that is not a String.
  T* find(std::string_view name) const noexcept {
    const auto isNamed = [&](std::uint64_t i) { return items_[i]->name().view() == name; };
    if (hasIndex(capacity_)) {
      const std::uint64_t i = index()->find(String::hashOf(name), isNamed);
      return i == ds::HashIndex::NONE ? nullptr : items_[i];
    }
    for (std::uint32_t i = 0; i < count_; ++i) {
      if (isNamed(i)) return items_[i];
    }
    return nullptr;
  }

  /// Returns the position of `object`, which must be in the list. Takes constant time for the last
  /// object.
  std::uint64_t positionOf(const T* object) const noexcept {
    if (items_[count_ - 1] == object) return count_ - 1;
    return static_cast<std::uint64_t>(std::find(items_, items_ + count_, object) - items_);
  }

  /// Appends an object. No object in the list may have the same name. `pool` must be the same in
  /// all calls. If it throws std::bad_alloc, nothing changes.
  void append(T* object, SmallBlockPool& pool) {
    if (count_ == capacity_) grow(pool);
    if (hasIndex(capacity_)) index()->insert(object->name().hash(), count_);
    items_[count_++] = object;
  }

  /// Removes the object at index `i`, which must be less than `count()`. Takes constant time for
  /// the last object. For other objects, the time is proportional to the size of the list.
  void remove(std::uint64_t i) noexcept {
    if (hasIndex(capacity_)) {
      index()->erase(items_[i]->name().hash(), i);
      if (i + 1 < count_) index()->shiftPositionsAbove(i);
    }
    std::copy(items_ + i + 1, items_ + count_, items_ + i);
    --count_;
  }

  /// Removes all objects and frees the memory of the list.
  void clear(SmallBlockPool& pool) noexcept {
    if (hasIndex(capacity_)) delete index();
    free(pool);
    items_ = nullptr;
    count_ = capacity_ = 0;
  }

 private:
  // The maximum capacity of a list without an index. For a larger list, the index is faster than a
  // scan. Scanning short lists saves 7 % of the instructions of the benchmark nodes.
  static constexpr std::uint32_t MAX_SCANNED = 8;

  static constexpr bool hasIndex(std::uint32_t capacity) noexcept { return capacity > MAX_SCANNED; }
  static constexpr std::size_t slotsFor(std::uint32_t capacity) noexcept {
    return std::size_t{capacity} + (hasIndex(capacity) ? 1 : 0);
  }
  static constexpr std::size_t bytesFor(std::uint32_t capacity) noexcept {
    return slotsFor(capacity) * sizeof(void*);
  }
  static constexpr bool isInPool(std::uint32_t capacity) noexcept {
    return bytesFor(capacity) <= SmallBlockPool::MAX_BYTES;
  }
  static void* memoryOf(T** items, std::uint32_t capacity) noexcept {
    return hasIndex(capacity) ? items - 1 : items;
  }

  ds::HashIndex*& index() const noexcept { return reinterpret_cast<ds::HashIndex**>(items_)[-1]; }

  T* findInIndex(const String& name) const noexcept {
    const auto isNamed = [&](std::uint64_t i) { return items_[i]->name() == name; };
    const std::uint64_t i = index()->find(name.hash(), isNamed);
    return i == ds::HashIndex::NONE ? nullptr : items_[i];
  }

  // Doubles the capacity. The first capacity is 2.
  void grow(SmallBlockPool& pool) {
    if (capacity_ > std::numeric_limits<std::uint32_t>::max() / 2) throw std::bad_alloc();
    const std::uint32_t capacity = capacity_ == 0 ? 2 : 2 * capacity_;
    std::unique_ptr<ds::HashIndex> made;
    if (hasIndex(capacity) && !hasIndex(capacity_)) made = indexOfAll();
    T** const grown = allocate(capacity, pool);
    std::copy_n(items_, count_, grown);
    ds::HashIndex* const kept = hasIndex(capacity_) ? index() : made.release();
    free(pool);
    items_ = grown;
    capacity_ = capacity;
    if (hasIndex(capacity)) index() = kept;
  }

  static T** allocate(std::uint32_t capacity, SmallBlockPool& pool) {
    const std::size_t bytes = bytesFor(capacity);
    void* const memory = isInPool(capacity) ? pool.allocate(bytes) : std::malloc(bytes);
    if (memory == nullptr) throw std::bad_alloc();
    return static_cast<T**>(memory) + (hasIndex(capacity) ? 1 : 0);
  }

  void free(SmallBlockPool& pool) noexcept {
    if (!isInPool(capacity_)) {
      std::free(memoryOf(items_, capacity_));
    } else if (capacity_ != 0) {
      pool.deallocate(memoryOf(items_, capacity_), bytesFor(capacity_));
    }
  }

  std::unique_ptr<ds::HashIndex> indexOfAll() const {
    auto index = std::make_unique<ds::HashIndex>();
    for (std::uint32_t i = 0; i < count_; ++i) index->insert(items_[i]->name().hash(), i);
    return index;
  }

  T** items_ = nullptr;
  std::uint32_t count_ = 0;
  std::uint32_t capacity_ = 0;
};

}  // namespace zn::korvo_sdk
