// How handles share what they hold: an object counts the handles that refer to it and goes with the
// last of them. String and File are such handles.
//
// The count is safe to change from several threads. As long as the process has one thread only (the
// C library knows), it is changed without the cost of an atomic operation.
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

/// How many handles refer to an object. A new one counts none.
class HandleCount {
 public:
  /// Counts one handle more.
  void add() noexcept {
    const std::uint32_t now = count_.load(std::memory_order_relaxed);
    if (now >= STUCK) return;
    if (isSingleThreaded()) {
      count_.store(now + 1, std::memory_order_relaxed);
    } else {
      count_.fetch_add(1, std::memory_order_relaxed);
    }
  }

  /// Counts one handle less; true when that was the last.
  bool drop() noexcept {
    const std::uint32_t now = count_.load(std::memory_order_relaxed);
    if (now >= STUCK) return false;
    if (!isSingleThreaded()) return count_.fetch_sub(1, std::memory_order_acq_rel) == 1;
    count_.store(now - 1, std::memory_order_relaxed);
    return now == 1;
  }

  /// From here on nothing is counted, and the object stays for good.
  void stick() noexcept { count_.store(STUCK, std::memory_order_relaxed); }

  /// Whether there is one handle and no other.
  bool isOne() const noexcept { return count_.load(std::memory_order_acquire) == 1; }

 private:
  // A count that came this far stays where it is, and its object for good: it never wraps around.
  static constexpr std::uint32_t STUCK = std::uint32_t{1} << 31;

  static bool isSingleThreaded() noexcept {
#ifdef VSA_HAS_SINGLE_THREADED
    return __libc_single_threaded != 0;
#else
    return false;
#endif
  }

  std::atomic<std::uint32_t> count_{0};
};

/// What a counted handle refers to. A new object has no handle yet (count 0); how it ends once the
/// last handle has let go is the business of the class that derives from it.
class VSA_API IRefCounted {
 public:
  IRefCounted() = default;
  IRefCounted(const IRefCounted&) = delete;
  IRefCounted& operator=(const IRefCounted&) = delete;

  /// Counts one more handle.
  void retain() const noexcept { count_.add(); }

  /// Counts one handle less; the object ends with the last one.
  void release() const noexcept {
    if (count_.drop()) dispose();
  }

 protected:
  virtual ~IRefCounted() = default;

  /// Ends the object: its memory is given back the way it was taken.
  virtual void dispose() const noexcept = 0;

  HandleCount& handles() const noexcept { return count_; }

 private:
  mutable HandleCount count_;
};

/// A counted object made with `new`, and deleted with its last handle.
class VSA_API RefCounted : public IRefCounted {
 protected:
  void dispose() const noexcept override { delete this; }
};

/// A counted handle with value semantics: copies share the object. Null when it holds none. The
/// count is safe across threads, the handle itself is not: no thread may assign to a handle that
/// another one uses.
template <class T>
class RefersTo {
 public:
  // A moved-from handle is null after construction; after assignment it holds what the target held.

  RefersTo() noexcept = default;
  explicit RefersTo(T* object) noexcept : object_(object) {
    if (object_ != nullptr) object_->retain();
  }
  RefersTo(const RefersTo& other) noexcept : RefersTo(other.object_) {}
  RefersTo(RefersTo&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the order of the steps handles it
  RefersTo& operator=(const RefersTo& other) noexcept {
    // Taken before the old one is let go: the two may be one.
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
  /// What is held, or null.
  T* object() const noexcept { return object_; }

 private:
  T* object_ = nullptr;
};

}  // namespace zn
