// Slabs: where the nodes, inputs and outputs of a scene live. Objects stay where they were made, in
// creation order, until all of them go at once.
//
// Slabs are aligned to 256 bytes: the reader resolves links in the order of the low 8 bits of the
// inputs' addresses, so that this order, too, is the same on every run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "foundation/vector.h"

namespace zn::korvo_sdk {

template <class T>
class Slabs {
 public:
  Slabs() = default;
  Slabs(const Slabs&) = delete;
  Slabs& operator=(const Slabs&) = delete;
  /// No object's end may look at another object.
  ~Slabs() {
    for (std::uint64_t i = 0; i < size_; ++i) (*this)[i].~T();
    for (T* const slab : slabs_) ::operator delete(static_cast<void*>(slab), ALIGNMENT);
  }

  std::uint64_t size() const noexcept { return size_; }
  T& operator[](std::uint64_t i) const noexcept { return slabs_[i / PER_SLAB][i % PER_SLAB]; }

  /// A new object behind the others. Throws what its constructor throws and std::bad_alloc, and
  /// changes nothing then.
  template <class... Arguments>
  T& make(Arguments&&... arguments) {
    if (size_ == slabs_.size * PER_SLAB) addSlab();
    T* const made = new (&(*this)[size_]) T(std::forward<Arguments>(arguments)...);
    ++size_;
    return *made;
  }

 private:
  static constexpr std::align_val_t ALIGNMENT{256};
  static constexpr std::size_t SLAB_BYTES = std::size_t{1} << 16;
  static constexpr std::uint64_t PER_SLAB = SLAB_BYTES / sizeof(T);

  void addSlab() {
    slabs_.push_back(nullptr);  // room first: a slab in hand must not be lost
    try {
      slabs_[slabs_.size - 1] = static_cast<T*>(::operator new(SLAB_BYTES, ALIGNMENT));
    } catch (...) {
      --slabs_.size;
      throw;
    }
  }

  ds::Vector<T*> slabs_;
  std::uint64_t size_ = 0;
};

}  // namespace zn::korvo_sdk
