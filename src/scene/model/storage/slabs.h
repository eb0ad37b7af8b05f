// Slabs: the memory of a scene's nodes, inputs and outputs. Objects keep their addresses, are
// stored in creation order and are destroyed together.
//
// A slab is aligned to its own size:
//
//   | bytes  | content                                          |
//   | 0      | pointer to the owner                             |
//   | 256    | objects, without gaps, until the slab is full    |
//
// The owner of an object is found by masking the address of the object. No object stores a pointer
// to its owner, which saves 8 bytes per object in scenes of millions of inputs.
//
// The first object of a slab is aligned to 256 bytes. Links are resolved in the order of the low 8
// bits of the inputs' addresses, so the alignment makes this order the same in every run.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include <vsa/foundation/vector.h>
#include "foundation/base/block_size.h"

namespace zn::korvo_sdk {

template <class T, class Owner>
class Slabs {
 public:
  explicit Slabs(Owner* owner) noexcept : owner_(owner) {}
  Slabs(const Slabs&) = delete;
  Slabs& operator=(const Slabs&) = delete;
  /// Destroys all objects. The destructor of T must not access other objects in slabs.
  ~Slabs() {
    for (std::uint64_t i = 0; i < size_; ++i) (*this)[i].~T();
    for (void* const region : regions_) ::operator delete(region, ALIGNMENT);
  }

  std::uint64_t size() const noexcept { return size_; }
  T& operator[](std::uint64_t i) const noexcept {
    return *(reinterpret_cast<T*>(slabs_[i / MAX_OBJECTS] + HEADER_BYTES) + i % MAX_OBJECTS);
  }

  /// Creates an object and appends it. Throws std::bad_alloc and the exceptions of the object's
  /// constructor. If it throws, nothing changes.
  template <class... Arguments>
  T& make(Arguments&&... arguments) {
    if (freeCount_ == 0) addSlab();
    T* const made = new (next_) T(std::forward<Arguments>(arguments)...);
    ++size_;
    ++next_;
    --freeCount_;
    return *made;
  }

  /// Returns the owner of the slab that contains `object`. `object` may be a member of an object in
  /// a slab.
  static Owner* ownerOf(const void* object) noexcept {
    const auto offset = reinterpret_cast<std::uintptr_t>(object) % SLAB_BYTES;
    return *reinterpret_cast<Owner* const*>(static_cast<const std::byte*>(object) - offset);
  }

 private:
  static constexpr std::size_t SLAB_BYTES = detail::blockBytes(std::size_t{1} << 16);
  static constexpr std::align_val_t ALIGNMENT{SLAB_BYTES};
  static constexpr std::size_t HEADER_BYTES = 256;
  // The number of objects in a full slab.
  static constexpr std::uint64_t MAX_OBJECTS = (SLAB_BYTES - HEADER_BYTES) / sizeof(T);
  // The maximum number of slabs in a region.
  static constexpr std::uint64_t MAX_SLABS = 16;

  void addSlab() {
    if (spareSlabs_ == 0) addRegion();
    std::byte* const slab = regions_[regions_.size - 1] + (spareSlabs_ - 1) * SLAB_BYTES;
    new (slab) Owner*(owner_);
    // If push_back throws, the slab stays spare, and the next call uses it.
    slabs_.push_back(slab);
    --spareSlabs_;
    next_ = reinterpret_cast<T*>(slab + HEADER_BYTES);
    freeCount_ = MAX_OBJECTS;
  }

  // Allocates a region: the memory of one or more slabs. A region contains as many slabs as already
  // exist, but at least one and at most MAX_SLABS. A separate allocation of each slab could waste
  // the size of a slab for its alignment.
  void addRegion() {
    const std::uint64_t count = std::clamp<std::uint64_t>(slabs_.size, 1, MAX_SLABS);
    // Reserves memory for the pointer first, so that push_back cannot throw and leak the region.
    regions_.reserveAdditional(1);
    regions_.push_back(static_cast<std::byte*>(::operator new(count* SLAB_BYTES, ALIGNMENT)));
    spareSlabs_ = count;
  }

  Owner* owner_;
  ds::Vector<std::byte*> slabs_;
  // The allocations, which are divided into slabs.
  ds::Vector<std::byte*> regions_;
  // The number of unused slabs in the last region.
  std::uint64_t spareSlabs_ = 0;
  std::uint64_t size_ = 0;
  // The address of the next object.
  T* next_ = nullptr;
  // The number of objects that still fit into the last slab.
  std::uint64_t freeCount_ = 0;
};

}  // namespace zn::korvo_sdk
