// Slabs: where the nodes, inputs and outputs of a scene live. Objects stay where they were made, in
// creation order, until all of them go at once.
//
// A slab lies on a multiple of its own size and begins with a pointer to its owner, so that an
// object finds its scene from its own address: a scene may hold many millions of inputs, and eight
// bytes in each would be felt. Objects begin on a multiple of 256 bytes: the reader resolves links
// in the order of the low 8 bits of the inputs' addresses, so that this order, too, is the same on
// every run.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include <vsa/foundation/vector.h>

namespace zn::korvo_sdk {

template <class T, class Owner>
class Slabs {
 public:
  explicit Slabs(Owner* owner) noexcept : owner_(owner) {}
  Slabs(const Slabs&) = delete;
  Slabs& operator=(const Slabs&) = delete;
  /// No object's end may look at another object.
  ~Slabs() {
    for (std::uint64_t i = 0; i < size_; ++i) (*this)[i].~T();
    for (void* const region : regions_) ::operator delete(region, ALIGNMENT);
  }

  std::uint64_t size() const noexcept { return size_; }
  T& operator[](std::uint64_t i) const noexcept {
    return *(reinterpret_cast<T*>(slabs_[i / PER_SLAB] + HEADER_BYTES) + i % PER_SLAB);
  }

  /// A new object behind the others. Throws what its constructor throws and std::bad_alloc, and
  /// changes nothing then.
  template <class... Arguments>
  T& make(Arguments&&... arguments) {
    if (room_ == 0) addSlab();
    T* const made = new (next_) T(std::forward<Arguments>(arguments)...);
    ++size_;
    ++next_;
    --room_;
    return *made;
  }

  /// The owner of the slabs in which `object` was made.
  static Owner* ownerOf(const T* object) noexcept {
    const auto within = reinterpret_cast<std::uintptr_t>(object) % SLAB_BYTES;
    return *reinterpret_cast<Owner* const*>(reinterpret_cast<const std::byte*>(object) - within);
  }

 private:
  static constexpr std::size_t SLAB_BYTES = std::size_t{1} << 16;
  static constexpr std::align_val_t ALIGNMENT{SLAB_BYTES};
  static constexpr std::size_t HEADER_BYTES = 256;
  static constexpr std::uint64_t MOST_SLABS = 16;  // in one region
  static constexpr std::uint64_t PER_SLAB = (SLAB_BYTES - HEADER_BYTES) / sizeof(T);

  void addSlab() {
    slabs_.push_back(nullptr);  // room first: what is had must be in the list
    try {
      if (spareSlabs_ == 0) addRegion();
    } catch (...) {
      --slabs_.size;
      throw;
    }
    std::byte* const slab = regions_[regions_.size - 1] + --spareSlabs_ * SLAB_BYTES;
    new (slab) Owner*(owner_);
    slabs_[slabs_.size - 1] = slab;
    next_ = reinterpret_cast<T*>(slab + HEADER_BYTES);
    room_ = PER_SLAB;
  }

  // As many slabs as there are, up to a mebibyte: to align each by itself would waste another.
  void addRegion() {
    const std::uint64_t count = std::clamp<std::uint64_t>(slabs_.size - 1, 1, MOST_SLABS);
    regions_.push_back(nullptr);
    try {
      regions_[regions_.size - 1] =
          static_cast<std::byte*>(::operator new(count* SLAB_BYTES, ALIGNMENT));
    } catch (...) {
      --regions_.size;
      throw;
    }
    spareSlabs_ = count;
  }

  Owner* owner_;
  ds::Vector<std::byte*> slabs_;
  ds::Vector<std::byte*> regions_;  // what slabs are cut from
  std::uint64_t spareSlabs_ = 0;    // of the last region
  std::uint64_t size_ = 0;
  T* next_ = nullptr;       // where the next object goes
  std::uint64_t room_ = 0;  // for so many more in the last slab
};

}  // namespace zn::korvo_sdk
