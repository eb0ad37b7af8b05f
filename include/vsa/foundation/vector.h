// Vector: contiguous elements in the order of insertion. `push_back` doubles the capacity of a full
// vector. A capacity of 0 becomes 2.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

namespace zn::ds {

/// Whether a vector may move an object of type T to another address by copying its bytes, without
/// destroying the original. Such a vector grows with realloc, which can move a large block without
/// copying it; this saves 4 % of the time of the benchmarks geo and links 1M. By default, the
/// constant is true only for trivially copyable types. It may be specialised as true, next to the
/// definition of T, if T owns memory through pointers and contains no pointers into itself.
template <class T>
inline constexpr bool MOVES_AS_BYTES = std::is_trivially_copyable_v<T>;

/// Owns elements of type T. The three members are public, so that a host can access the elements
/// directly. A host must not change these members. Pointers to elements are valid until the vector
/// grows, is cleared, is assigned to or is destroyed, and until `reserve` is called. If memory runs
/// out, a function throws std::bad_alloc and the vector does not change. There is one exception:
/// `reserve` with a capacity below the size may remove the last elements before it allocates
/// memory.
template <class T>
class Vector {
 public:
  T* data = nullptr;           ///< `size` elements; null if the capacity is 0.
  std::uint64_t size = 0;      ///< The number of elements.
  std::uint64_t capacity = 0;  ///< The number of elements for which there is memory.

  Vector() noexcept = default;
  /// Copies the elements into a new array of the source's capacity.
  Vector(const Vector& other) : Vector() { copyFrom(other); }
  Vector(Vector&& other) noexcept
      : data(std::exchange(other.data, nullptr)),
        size(std::exchange(other.size, 0)),
        capacity(std::exchange(other.capacity, 0)) {}
  /// Copies the elements. If the copy fails, this vector does not change.
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

  /// The i-th element. `i` must be less than `size`; this is not checked.
  T& operator[](std::uint64_t i) noexcept { return data[i]; }
  const T& operator[](std::uint64_t i) const noexcept { return data[i]; }
  T* begin() noexcept { return data; }
  T* end() noexcept { return data + size; }
  const T* begin() const noexcept { return data; }
  const T* end() const noexcept { return data + size; }

  /// Appends a copy of `value`. A full vector first doubles its capacity; a capacity of 0 becomes
  /// 2.
  void push_back(const T& value) {
    if (size == capacity) {
      T copy(value);  // `value` may be an element of this vector
      grow();
      new (data + size) T(std::move(copy));
    } else {
      new (data + size) T(value);
    }
    ++size;
  }

  /// Appends `value` and moves from it.
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

  /// Sets the capacity to `n`. Removes the last elements if `n` is less than the current size.
  /// Frees all memory if `n` is 0. There is one exception: if `n` equals the current size and is
  /// not 0, the function does nothing, even if the capacity is greater.
  void reserve(unsigned long n) {
    if (n == 0) {
      release();
    } else if (n != size) {
      resizeStorage(n);
    }
  }

  /// Makes room for `count` more elements. If the vector must grow, its capacity at least doubles.
  /// So appending n elements one by one takes time proportional to n.
  void reserveAdditional(std::uint64_t count) {
    const std::uint64_t needed = size + count;
    if (needed > capacity) reserve(static_cast<unsigned long>(std::max(needed, 2 * capacity)));
  }

  /// Removes all elements and keeps the capacity.
  void clear() noexcept {
    destroy(0);
    size = 0;
  }

  /// Exchanges the contents of two vectors. Pointers to elements stay valid.
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
