// HashIndex: finds positions in a list by hash. It is used for lists that may become long (the
// buckets of HashMap, the nodes of a scene, the inputs of a node). It stores no keys: the owner of
// the list decides which position matches. Internal.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>

#include <vsa/foundation/api.h>
#include "foundation/base/prefetch.h"

namespace zn::ds {

/// Mixes a weak hash, such as an address, so that its low bits depend on all its bits (the
/// finalizer of MurmurHash3, public domain).
inline std::uint64_t mixed(std::uint64_t hash) noexcept {
  hash ^= hash >> 33;
  hash *= 0xff51afd7ed558ccdULL;
  hash ^= hash >> 33;
  hash *= 0xc4ceb9fe1a85ec53ULL;
  return hash ^ hash >> 32;
}

/// Open addressing with linear probing. A slot takes eight bytes: a tag of the hash, and a
/// position. At most half of the slots are used. Positions are below 2^32 - 1.
class VSA_API HashIndex {
 public:
  /// The result of a look-up that finds nothing.
  static constexpr std::uint64_t NONE = std::numeric_limits<std::uint64_t>::max();

  /// The number of positions in the index.
  std::uint64_t size() const noexcept { return used_; }

  /// The first position under `hash` for which `matches(position)` is true, or NONE.
  template <class Matches>
  std::uint64_t find(std::uint64_t hash, const Matches& matches) const {
    if (used_ == 0) return NONE;
    const std::uint32_t tag = tagOf(hash);
    for (std::uint64_t at = tag & mask_; slots_[at].position != FREE; at = (at + 1) & mask_) {
      if (slots_[at].tag == tag && matches(slots_[at].position)) return slots_[at].position;
    }
    return NONE;
  }

  /// A hint that `hash` will be looked up.
  void prefetch(std::uint64_t hash) const noexcept {
    if (used_ != 0) zn::detail::prefetch(&slots_[tagOf(hash) & mask_]);
  }

  /// Ensures that the next insert does not throw. Throws std::bad_alloc.
  void reserveOne() {
    if (2 * (used_ + 1) > slotCount()) grow();
  }

  /// Adds `position` under `hash`. Throws std::bad_alloc, and std::length_error for a position of
  /// 2^32 - 1 or more; the index is unchanged then.
  void insert(std::uint64_t hash, std::uint64_t position);

  /// Removes `position`. Does nothing when it is not under `hash`.
  void erase(std::uint64_t hash, std::uint64_t position) noexcept;

  /// Lowers every position above `position` by one. Call it after the entry at `position` was
  /// erased here and removed from the list. Takes time proportional to the index.
  void closePosition(std::uint64_t position) noexcept;

 private:
  static constexpr std::uint32_t FREE = std::numeric_limits<std::uint32_t>::max();
  struct Slot {
    std::uint32_t tag = 0;          // its low bits select the slot where the search begins
    std::uint32_t position = FREE;  // FREE when the slot is empty
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
