// HashIndex: growth and removal. Look-ups are inline in the header.
#include "foundation/containers/hash_index.h"

#include <stdexcept>

namespace zn::ds {

void HashIndex::insert(std::uint64_t hash, std::uint64_t position) {
  if (position >= FREE) throw std::length_error("a hash index holds fewer than 2^32 positions");
  reserveOne();
  place({tagOf(hash), static_cast<std::uint32_t>(position)});
  ++used_;
}

void HashIndex::erase(std::uint64_t hash, std::uint64_t position) noexcept {
  if (used_ == 0) return;
  std::uint64_t at = tagOf(hash) & mask_;
  while (slots_[at].position != position) {
    if (slots_[at].position == FREE) return;
    at = (at + 1) & mask_;
  }
  closeGap(at);
  --used_;
}

void HashIndex::shiftPositionsAbove(std::uint64_t position) noexcept {
  for (std::uint64_t at = 0; at < slotCount(); ++at) {
    std::uint32_t& held = slots_[at].position;
    if (held != FREE && held > position) --held;
  }
}

void HashIndex::grow() {
  const std::uint64_t before = slotCount();
  const std::uint64_t after = before == 0 ? 16 : 2 * before;
  std::unique_ptr<Slot[]> old = std::make_unique<Slot[]>(after);
  old.swap(slots_);
  mask_ = after - 1;
  for (std::uint64_t i = 0; i < before; ++i) {
    if (old[i].position != FREE) place(old[i]);
  }
}

void HashIndex::place(Slot slot) noexcept {
  std::uint64_t at = slot.tag & mask_;
  while (slots_[at].position != FREE) at = (at + 1) & mask_;
  slots_[at] = slot;
}

// Moves later entries back into the gap. Without this, a look-up of these entries would end at the
// gap. An entry is not moved if its search starts after the gap.
void HashIndex::closeGap(std::uint64_t gap) noexcept {
  for (std::uint64_t at = (gap + 1) & mask_; slots_[at].position != FREE; at = (at + 1) & mask_) {
    const std::uint64_t home = slots_[at].tag & mask_;
    const std::uint64_t fromHome = (at - home) & mask_;
    const std::uint64_t fromGap = (at - gap) & mask_;
    if (fromHome < fromGap) continue;
    slots_[gap] = slots_[at];
    gap = at;
  }
  slots_[gap].position = FREE;
}

}  // namespace zn::ds
