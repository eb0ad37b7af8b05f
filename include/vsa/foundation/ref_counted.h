// Reference counting: an object counts its handles and is deleted with the last one. String and
// File are such handles.
//
// Several threads may share an object if each has its own handle. While the process has a single
// thread (which the C library reports), counts are changed without atomic operations.
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

#if defined(__has_include)
#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define VSA_HAS_SINGLE_THREADED 1
#endif
#endif

#include <vsa/foundation/api.h>

namespace zn {

/// The number of handles of an object. Starts at 0.
class HandleCount {
 public:
  void increment() noexcept {
    const std::uint32_t count = count_.load(std::memory_order_relaxed);
    if (count >= IMMORTAL) return;
    if (isSingleThreaded()) {
      count_.store(count + 1, std::memory_order_relaxed);
    } else {
      count_.fetch_add(1, std::memory_order_relaxed);
    }
  }

  /// Returns whether the count has become 0.
  bool decrement() noexcept {
    const std::uint32_t count = count_.load(std::memory_order_relaxed);
    if (count >= IMMORTAL) return false;
    if (!isSingleThreaded()) return count_.fetch_sub(1, std::memory_order_acq_rel) == 1;
    count_.store(count - 1, std::memory_order_relaxed);
    return count == 1;
  }

  /// Stops counting. The object is then never deleted.
  void makeImmortal() noexcept { count_.store(IMMORTAL, std::memory_order_relaxed); }

  /// Whether there is exactly one handle.
  bool isOne() const noexcept { return count_.load(std::memory_order_acquire) == 1; }

 private:
  // A count that reaches this value no longer changes, so that it cannot wrap around.
  static constexpr std::uint32_t IMMORTAL = std::uint32_t{1} << 31;

  static bool isSingleThreaded() noexcept {
#ifdef VSA_HAS_SINGLE_THREADED
    return __libc_single_threaded != 0;
#else
    return false;
#endif
  }

  std::atomic<std::uint32_t> count_{0};
};

/// A reference-counted object. A new object has no handle. The derived class decides how to delete
/// it.
class VSA_API IRefCounted {
 public:
  IRefCounted() = default;
  IRefCounted(const IRefCounted&) = delete;
  IRefCounted& operator=(const IRefCounted&) = delete;

  /// Adds one to the number of handles.
  void retain() const noexcept { count_.increment(); }

  /// Subtracts one from the number of handles. Deletes the object when there are none left.
  void release() const noexcept {
    if (count_.decrement()) dispose();
  }

 protected:
  virtual ~IRefCounted() = default;

  /// Destroys the object and frees its memory.
  virtual void dispose() const noexcept = 0;

  HandleCount& handles() const noexcept { return count_; }

 private:
  mutable HandleCount count_;
};

/// A reference-counted object that is created with `new`.
class VSA_API RefCounted : public IRefCounted {
 protected:
  void dispose() const noexcept override { delete this; }
};

/// A reference-counted handle with value semantics: copies share the object. May be null. Threads
/// may use different handles of one object, but not the same handle while one of them assigns to
/// it.
template <class T>
class RefersTo {
 public:
  // Move construction leaves the source null. Move assignment swaps: the source gets the old
  // object.

  RefersTo() noexcept = default;
  explicit RefersTo(T* object) noexcept : object_(object) {
    if (object_ != nullptr) object_->retain();
  }
  RefersTo(const RefersTo& other) noexcept : RefersTo(other.object_) {}
  RefersTo(RefersTo&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the order of the steps handles it
  RefersTo& operator=(const RefersTo& other) noexcept {
    // Retains the new object before it releases the old one: they may be the same object.
    T* const object = other.object_;
    if (object != nullptr) object->retain();
    if (object_ != nullptr) object_->release();
    object_ = object;
    return *this;
  }
  RefersTo& operator=(RefersTo&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~RefersTo() {
    if (object_ != nullptr) object_->release();
  }

 protected:
  /// The object, or null.
  T* object() const noexcept { return object_; }

 private:
  T* object_ = nullptr;
};

}  // namespace zn
