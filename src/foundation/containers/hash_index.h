// HashIndex: finds positions in someone else's list by hash. It is kept beside lists that may grow
// long (the buckets of HashMap, the nodes of a scene, the inputs of a node) and holds no keys: the
// owner says whether a position is the one looked for.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>

#include <vsa/foundation/api.h>

namespace zn::ds {

/// A weak hash, of an address say, made fit for an index: its low bits depend on all of it (the
/// finalizer of MurmurHash3, public domain).
inline std::uint64_t spread(std::uint64_t hash) noexcept {
  hash ^= hash >> 33;
  hash *= 0xff51afd7ed558ccdULL;
  hash ^= hash >> 33;
  hash *= 0xc4ceb9fe1a85ec53ULL;
  return hash ^ hash >> 32;
}

/// Open addressing with linear probing over {part of the hash, position}, eight bytes a slot, at
/// most half full. Positions are below 2^32 - 1.
class VSA_API HashIndex {
 public:
  /// "No such position."
  static constexpr std::uint64_t NONE = std::numeric_limits<std::uint64_t>::max();

  /// Positions in the index.
  std::uint64_t size() const noexcept { return used_; }

  /// The first position filed under `hash` for which `matches(position)` holds, or NONE.
  template <class Matches>
  std::uint64_t find(std::uint64_t hash, const Matches& matches) const {
    if (used_ == 0) return NONE;
    const std::uint32_t part = partOf(hash);
    for (std::uint64_t at = part & mask_; slots_[at].position != FREE; at = (at + 1) & mask_) {
      if (slots_[at].part == part && matches(slots_[at].position)) return slots_[at].position;
    }
    return NONE;
  }

  /// Makes sure that the next insert finds room. Throws std::bad_alloc when there is none.
  void makeRoom() {
    if (2 * (used_ + 1) > slotCount()) grow();
  }

  /// Files `position` under `hash`. Throws std::bad_alloc when there is no room, std::length_error
  /// for a position of 2^32 - 1 or more; nothing is changed then.
  void insert(std::uint64_t hash, std::uint64_t position);

  /// Takes `position` out again. Does nothing when it is not filed under `hash`.
  void erase(std::uint64_t hash, std::uint64_t position) noexcept;

 private:
  static constexpr std::uint32_t FREE = std::numeric_limits<std::uint32_t>::max();
  struct Slot {
    std::uint32_t part = 0;         // of the hash; its low bits choose the slot where a run begins
    std::uint32_t position = FREE;  // FREE when the slot holds nothing
  };

  static std::uint32_t partOf(std::uint64_t hash) noexcept {
    return static_cast<std::uint32_t>(hash);
  }

  std::uint64_t slotCount() const noexcept { return slots_ == nullptr ? 0 : mask_ + 1; }
  void grow();
  void place(Slot filed) noexcept;
  void closeGap(std::uint64_t gap) noexcept;

  std::unique_ptr<Slot[]> slots_;
  std::uint64_t mask_ = 0;
  std::uint64_t used_ = 0;
};

}  // namespace zn::ds
