// HashIndex: finds positions in a list by hash. Internal.
//
// Lists that may become long have a HashIndex, such as the nodes of a scene or the inputs of a
// node. All buckets of a HashMap share one. The index stores no keys, and only the low 32 bits of a
// hash. The owner of the list decides which position matches.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>

#include <vsa/foundation/api.h>
#include "foundation/base/prefetch.h"

namespace zn::ds {

/// Mixes the bits of a weak hash, such as an address. Afterwards the low bits depend on all bits of
/// the hash. This is the finalizer of MurmurHash3 (public domain).
inline std::uint64_t mixed(std::uint64_t hash) noexcept {
  hash ^= hash >> 33;
  hash *= 0xff51afd7ed558ccdULL;
  hash ^= hash >> 33;
  hash *= 0xc4ceb9fe1a85ec53ULL;
  return hash ^ hash >> 32;
}

/// A hash table with open addressing and linear probing. A slot has eight bytes: a tag from the
/// hash, and a position. At most half of the slots are used. Positions must be less than 2^32 - 1.
class VSA_API HashIndex {
 public:
  /// The result of a look-up that finds nothing.
  static constexpr std::uint64_t NONE = std::numeric_limits<std::uint64_t>::max();

  /// Returns the number of positions in the index.
  std::uint64_t size() const noexcept { return used_; }

  /// Returns a position for which `matches(position)` is true, or NONE. Calls `matches` for the
  /// positions under `hash`, and under other hashes with the same low 32 bits, until it returns
  /// true.
  template <class Matches>
  std::uint64_t find(std::uint64_t hash, const Matches& matches) const {
    if (used_ == 0) return NONE;
    const std::uint32_t tag = tagOf(hash);
    for (std::uint64_t at = tag & mask_; slots_[at].position != FREE; at = (at + 1) & mask_) {
      if (slots_[at].tag == tag && matches(slots_[at].position)) return slots_[at].position;
    }
    return NONE;
  }

  /// Prefetches the slot for a look-up of `hash`.
  void prefetch(std::uint64_t hash) const noexcept {
    if (used_ != 0) zn::detail::prefetch(&slots_[tagOf(hash) & mask_]);
  }

  /// Allocates memory for one more position, so that the next insert allocates nothing. Throws
  /// std::bad_alloc.
  void reserveOne() {
    if (2 * (used_ + 1) > slotCount()) grow();
  }

  /// Adds `position` under `hash`. Throws std::bad_alloc. Throws std::length_error if `position` is
  /// 2^32 - 1 or more. After an exception the index is unchanged.
  void insert(std::uint64_t hash, std::uint64_t position);

  /// Removes `position`, which must be under `hash`. Does nothing if the index does not contain
  /// `position`.
  void erase(std::uint64_t hash, std::uint64_t position) noexcept;

  /// Reduces every position above `position` by one. Call it when the element at `position` is
  /// removed from the list, after `position` was erased from the index. Takes time proportional to
  /// the number of slots, which never decreases.
  void shiftPositionsAbove(std::uint64_t position) noexcept;

 private:
  static constexpr std::uint32_t FREE = std::numeric_limits<std::uint32_t>::max();
  struct Slot {
    // The low bits select the slot where a search begins.
    std::uint32_t tag = 0;
    // FREE if the slot is empty.
    std::uint32_t position = FREE;
  };

  static std::uint32_t tagOf(std::uint64_t hash) noexcept {
    return static_cast<std::uint32_t>(hash);
  }

  std::uint64_t slotCount() const noexcept { return slots_ == nullptr ? 0 : mask_ + 1; }
  void grow();
  void place(Slot slot) noexcept;
  void closeGap(std::uint64_t gap) noexcept;

  std::unique_ptr<Slot[]> slots_;
  std::uint64_t mask_ = 0;
  std::uint64_t used_ = 0;
};

}  // namespace zn::ds
