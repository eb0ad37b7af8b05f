// KeySet and KeyMap: hash tables with path keys, each in one block of memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "tools/vsa/check/text/path_key.h"

namespace vsa_tools {

/// A hash map with linear probing. An insertion takes about a fifth of the time that a
/// std::unordered_map takes, because that map allocates memory for each key.
template <class Value>
class KeyMap {
 public:
  /// `slots` is the initial number of slots, a power of 2. Half as many keys fit before it grows.
  explicit KeyMap(std::size_t slots = FIRST_SLOTS) : firstSlots_(slots) {}

  /// Inserts the key with `value` if the map does not contain the key. Returns the value of the
  /// key, which is valid until the next insertion, and whether the key was inserted.
  std::pair<Value&, bool> insert(PathKey key, const Value& value) {
    key = stored(key);
    if ((count_ + 1) * 2 > slots_.size()) grow();
    Slot& slot = slotOf(key);
    const bool isNew = slot.key != key;
    if (isNew) {
      slot = {key, value};
      ++count_;
    }
    return {slot.value, isNew};
  }
  /// Loads the memory of the key into the cache, so that a later insert() does not wait for it.
  void prefetch(PathKey key) const {
    if (!slots_.empty()) __builtin_prefetch(&slots_[stored(key) & (slots_.size() - 1)]);
  }
  bool contains(PathKey key) { return !slots_.empty() && slotOf(stored(key)).key != EMPTY; }
  bool hasAnyKeyOf(KeyMap& other) {
    return std::any_of(slots_.begin(), slots_.end(), [&](const Slot& slot) {
      return slot.key != EMPTY && other.contains(slot.key);
    });
  }

 private:
  static constexpr PathKey EMPTY = 0;
  static constexpr std::size_t FIRST_SLOTS = 1024;

  struct Slot {
    PathKey key = EMPTY;
    [[no_unique_address]] Value value;
  };

  // The key of an empty slot is 0. A key 0 is therefore stored as 2^64 - 1.
  static PathKey stored(PathKey key) { return key == EMPTY ? ~EMPTY : key; }

  Slot& slotOf(PathKey key) {
    std::size_t at = key & (slots_.size() - 1);
    while (slots_[at].key != EMPTY && slots_[at].key != key) at = (at + 1) & (slots_.size() - 1);
    return slots_[at];
  }

  void grow() {
    std::vector<Slot> old(slots_.empty() ? firstSlots_ : slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
      if (slot.key != EMPTY) slotOf(slot.key) = slot;
    }
  }

  std::size_t firstSlots_;
  std::vector<Slot> slots_;
  std::size_t count_ = 0;
};

class KeySet {
 public:
  KeySet() = default;
  /// `slots` is the initial number of slots, a power of 2.
  explicit KeySet(std::size_t slots) : keys_(slots) {}

  /// Inserts the key. Returns whether the set did not contain it before.
  bool insert(PathKey key) { return keys_.insert(key, {}).second; }
  void prefetch(PathKey key) const { keys_.prefetch(key); }
  bool contains(PathKey key) { return keys_.contains(key); }
  bool hasAnyOf(KeySet& other) { return keys_.hasAnyKeyOf(other.keys_); }

 private:
  struct Nothing {};

  KeyMap<Nothing> keys_;
};

}  // namespace vsa_tools
