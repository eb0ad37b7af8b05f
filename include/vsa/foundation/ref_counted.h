// Reference counting: an object counts the handles that refer to it and is deleted with the last
// one. String and File are such handles.
//
// Threads may share an object, each through a handle of its own. While the process has one thread
// only (the C library knows), counts are changed without atomic operations.
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

/// How many handles refer to an object; starts at 0.
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

  /// True when the count has become 0.
  bool decrement() noexcept {
    const std::uint32_t count = count_.load(std::memory_order_relaxed);
    if (count >= IMMORTAL) return false;
    if (!isSingleThreaded()) return count_.fetch_sub(1, std::memory_order_acq_rel) == 1;
    count_.store(count - 1, std::memory_order_relaxed);
    return count == 1;
  }

  /// Stops counting: the object is never deleted.
  void makeImmortal() noexcept { count_.store(IMMORTAL, std::memory_order_relaxed); }

  /// Whether there is exactly one handle.
  bool isOne() const noexcept { return count_.load(std::memory_order_acquire) == 1; }

 private:
  // A count that reaches this value is not changed any more, so it never wraps around.
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

/// A reference-counted object. A new one has no handle yet. The derived class decides how it is
/// deleted.
class VSA_API IRefCounted {
 public:
  IRefCounted() = default;
  IRefCounted(const IRefCounted&) = delete;
  IRefCounted& operator=(const IRefCounted&) = delete;

  /// Counts one more handle.
  void retain() const noexcept { count_.increment(); }

  /// Counts one handle less; deletes the object with the last one.
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

/// A reference-counted handle with value semantics: copies share the object. May be null. The count
/// is safe across threads; the handle itself is not: no thread may assign to a handle that another
/// one uses.
template <class T>
class RefersTo {
 public:
  // Moving from a handle leaves it null; move assignment leaves it with the target's old object.

  RefersTo() noexcept = default;
  explicit RefersTo(T* object) noexcept : object_(object) {
    if (object_ != nullptr) object_->retain();
  }
  RefersTo(const RefersTo& other) noexcept : RefersTo(other.object_) {}
  RefersTo(RefersTo&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the order of the steps handles it
  RefersTo& operator=(const RefersTo& other) noexcept {
    // Retain first: self-assignment.
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
