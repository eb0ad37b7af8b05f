#include "tools/vsa/fmt/reading/declared_nodes.h"

#include <functional>
#include <utility>

namespace vsa_tools {

namespace {

constexpr std::size_t MAX_SLOTS = std::size_t{8} << 20;

std::uint64_t hashOf(std::string_view name) {
  return std::hash<std::string_view>()(name);
}

}  // namespace

// Returns the index of the slot with that hash, or of an empty slot. Uses linear probing.
std::size_t DeclaredNodes::find(std::uint64_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = firstSlot(hash);
  while (slots_[at] != 0 && ((slots_[at] ^ hash) & ~PART_MASK) != 0) at = (at + 1) & mask;
  return at;
}

void DeclaredNodes::grow() {
  std::vector<std::uint64_t> smaller(slots_.size() * 2);
  std::swap(slots_, smaller);
  for (const std::uint64_t slot : smaller) {
    if (slot != 0) slots_[find(slot)] = slot;
  }
}

bool DeclaredNodes::declare(std::string_view name) {
  const bool isFull = used_ >= slots_.size() / 4 * 3;
  if (isFull && slots_.size() < MAX_SLOTS) grow();
  const std::uint64_t hash = hashOf(name);
  std::uint64_t& slot = slots_[find(hash)];
  if (slot == 0) {
    if (used_ >= slots_.size() / 4 * 3) return false;
    ++used_;
  }
  const std::uint64_t before = slot & PART_MASK;
  slot = (hash & ~PART_MASK) | (part_ & PART_MASK);
  return isEarlier(before);
}

void DeclaredNodes::remove(std::string_view name) {
  std::uint64_t& slot = slots_[find(hashOf(name))];
  slot &= ~PART_MASK;
}

void DeclaredNodes::prefetch(std::string_view name) const {
  __builtin_prefetch(&slots_[firstSlot(hashOf(name))]);
}

// Returns the number of the last part that declared the node, or 0 if the node is not declared.
std::uint64_t DeclaredNodes::partOf(std::string_view name) const {
  return slots_[find(hashOf(name))] & PART_MASK;
}

}  // namespace vsa_tools
