// Vector: contiguous elements in insertion order. It grows by doubling from 2.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

namespace zn::ds {

/// Whether an object of type T can be relocated by copying its bytes, without destroying the
/// original: true of everything that owns through pointers and has no pointer to itself. A vector
/// of such elements grows with realloc, which can move large blocks without copying them.
/// Specialise it beside the type.
template <class T>
inline constexpr bool MOVES_AS_BYTES = std::is_trivially_copyable_v<T>;

/// Owns elements of type T. The three fields are public for direct access to the elements; hosts
/// only read them. Pointers to elements are valid until the vector grows, is reserved or destroyed.
/// When memory runs out, std::bad_alloc is thrown and the vector is unchanged, except for elements
/// that a smaller capacity drops.
template <class T>
class Vector {
 public:
  T* data = nullptr;           ///< `size` elements; null while nothing is reserved.
  std::uint64_t size = 0;      ///< Elements in use.
  std::uint64_t capacity = 0;  ///< Elements that fit without growing.

  Vector() noexcept = default;
  /// A new array of the source's capacity with copies of its elements.
  Vector(const Vector& other) : Vector() { copyFrom(other); }
  Vector(Vector&& other) noexcept
      : data(std::exchange(other.data, nullptr)),
        size(std::exchange(other.size, 0)),
        capacity(std::exchange(other.capacity, 0)) {}
  /// Copy and swap: when the copy fails, this vector is unchanged.
  Vector& operator=(const Vector& other) {
    Vector copy(other);
    swap(copy);
    return *this;
  }
  Vector& operator=(Vector&& other) noexcept {
    Vector moved(std::move(other));
    swap(moved);
    return *this;
  }
  ~Vector() { release(); }

  /// The i-th element; `i` must be below `size`, which is not checked.
  T& operator[](std::uint64_t i) noexcept { return data[i]; }
  const T& operator[](std::uint64_t i) const noexcept { return data[i]; }
  T* begin() noexcept { return data; }
  T* end() noexcept { return data + size; }
  const T* begin() const noexcept { return data; }
  const T* end() const noexcept { return data + size; }

  /// Appends a copy of `value`. A full vector first grows to 2, or to twice its size.
  void push_back(const T& value) {
    if (size == capacity) {
      T copy(value);  // `value` may be an element of the array that is freed
      grow();
      new (data + size) T(std::move(copy));
    } else {
      new (data + size) T(value);
    }
    ++size;
  }

  /// Appends `value` by moving from it.
  void push_back(T&& value) {
    if (size == capacity) {
      T moved(std::move(value));
      grow();
      new (data + size) T(std::move(moved));
    } else {
      new (data + size) T(std::move(value));
    }
    ++size;
  }

  /// Sets the capacity to `n`. 0 frees the storage; the current size changes nothing; fewer than
  /// the current size drops the last elements.
  void reserve(unsigned long n) {
    if (n == 0) {
      release();
    } else if (n != size) {
      resizeStorage(n);
    }
  }

  /// Makes sure that `count` more elements fit. When they do not, the capacity at least doubles, so
  /// that appending element by element takes linear time.
  void reserveAdditional(std::uint64_t count) {
    const std::uint64_t needed = size + count;
    if (needed > capacity) reserve(static_cast<unsigned long>(std::max(needed, 2 * capacity)));
  }

  /// Removes the elements and keeps the storage.
  void clear() noexcept {
    destroy(0);
    size = 0;
  }

  /// Exchanges the contents; pointers to elements stay valid.
  void swap(Vector& other) noexcept {
    std::swap(data, other.data);
    std::swap(size, other.size);
    std::swap(capacity, other.capacity);
  }

 private:
  static void* reallocated(void* old, std::uint64_t n) {
    // NOLINTNEXTLINE(bugprone-sizeof-expression): an element may well be a pointer
    constexpr std::size_t ELEMENT_BYTES = sizeof(T);
    if (n > std::numeric_limits<std::size_t>::max() / ELEMENT_BYTES) throw std::bad_alloc();
    void* const memory = std::realloc(old, static_cast<std::size_t>(n) * ELEMENT_BYTES);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
  }

  void grow() { reserve(size == 0 ? 2 : static_cast<unsigned long>(2 * size)); }

  void resizeStorage(std::uint64_t n) {
    const std::uint64_t kept = std::min(size, n);
    if constexpr (MOVES_AS_BYTES<T>) {
      destroy(kept);
      size = kept;
      data = static_cast<T*>(reallocated(static_cast<void*>(data), n));
    } else {
      T* const moved = static_cast<T*>(reallocated(nullptr, n));
      for (std::uint64_t i = 0; i < kept; ++i) new (moved + i) T(std::move(data[i]));
      release();
      data = moved;
    }
    size = kept;
    capacity = n;
  }

  void copyFrom(const Vector& other) {
    if (other.capacity == 0) return;
    data = static_cast<T*>(reallocated(nullptr, other.capacity));
    capacity = other.capacity;
    for (; size < other.size; ++size) new (data + size) T(other.data[size]);
  }

  void destroy(std::uint64_t from) noexcept {
    if constexpr (!std::is_trivially_destructible_v<T>) {
      for (std::uint64_t i = size; i > from; --i) data[i - 1].~T();
    }
  }

  void release() noexcept {
    destroy(0);
    std::free(data);
    data = nullptr;
    size = 0;
    capacity = 0;
  }
};

}  // namespace zn::ds
