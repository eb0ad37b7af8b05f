// UnassignedValue: the memory of a value that the reader keeps by rule. Internal.
//
// The plain entry points do not free the memory of a value whose statement fails, or which no input
// takes. For LeakSanitizer this memory is marked, and no other: a suppression by name would also
// hide the memory of values that a scene took and forgot to free.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VSA_FINDS_LEAKS
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define VSA_FINDS_LEAKS
#endif

#if defined(VSA_FINDS_LEAKS)
#include <sanitizer/lsan_interface.h>
#endif

namespace zn::korvo_sdk::impl {

#if defined(VSA_FINDS_LEAKS)

class UnassignedValue {
 public:
  UnassignedValue() = default;
  UnassignedValue(const UnassignedValue&) = delete;
  UnassignedValue& operator=(const UnassignedValue&) = delete;
  ~UnassignedValue() { keep(); }

  /// Called when the memory of a value was allocated. A value before it was not assigned.
  void hold(void* memory) noexcept {
    keep();
    memory_ = memory;
  }
  /// Called when the statement ends. `isAssigned`: the scene took ownership of the value.
  void end(bool isAssigned) noexcept {
    if (!isAssigned) keep();
    memory_ = nullptr;
  }

 private:
  void keep() noexcept {
    if (memory_ != nullptr) __lsan_ignore_object(memory_);
    memory_ = nullptr;
  }

  void* memory_ = nullptr;
};

#else

class UnassignedValue {
 public:
  void hold(void* /*memory*/) noexcept {}
  void end(bool /*isAssigned*/) noexcept {}
};

#endif

}  // namespace zn::korvo_sdk::impl
