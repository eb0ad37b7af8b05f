// NamedList: things with a name, in creation order: the inputs and outputs of a node, the members
// of an object. A short list is scanned, a long one has an index.
#pragma once

#include <cstdint>
#include <memory>

#include "foundation/hash_index.h"
#include "foundation/string.h"
#include "foundation/vector.h"

namespace zn::korvo_sdk {

/// Holds pointers; what they point to belongs to the scene. T answers `name()`.
template <class T>
class NamedList {
 public:
  std::uint64_t count() const noexcept { return things_.size; }
  /// The i-th, in creation order; `i` is below `count`.
  T* at(std::uint64_t i) const noexcept { return things_[i]; }

  /// The one of that name, or null.
  T* find(const String& name) const noexcept {
    if (index_ != nullptr) {
      const auto isNamed = [&](std::uint64_t i) { return things_[i]->name() == name; };
      const std::uint64_t at = index_->find(name.hash(), isNamed);
      return at == ds::HashIndex::NONE ? nullptr : things_[at];
    }
    for (T* const thing : things_) {
      if (thing->name() == name) return thing;
    }
    return nullptr;
  }

  /// Appends one whose name is not in the list yet. Throws std::bad_alloc and changes nothing when
  /// there is no room.
  void append(T* thing) {
    if (things_.size == SCANNED && index_ == nullptr) index_ = indexOfAll();
    if (index_ != nullptr) index_->makeRoom();
    things_.push_back(thing);
    if (index_ != nullptr) index_->insert(thing->name().hash(), things_.size - 1);
  }

 private:
  // Up to this many, a scan is the faster way.
  static constexpr std::uint64_t SCANNED = 8;

  std::unique_ptr<ds::HashIndex> indexOfAll() const {
    auto index = std::make_unique<ds::HashIndex>();
    for (std::uint64_t i = 0; i < things_.size; ++i) index->insert(things_[i]->name().hash(), i);
    return index;
  }

  ds::Vector<T*> things_;
  std::unique_ptr<ds::HashIndex> index_;  // of all of them, once there are more than SCANNED
};

}  // namespace zn::korvo_sdk
