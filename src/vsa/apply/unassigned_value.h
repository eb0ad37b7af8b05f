// UnassignedValue: marks the memory that the reader intentionally does not free. Internal.
//
// The plain entry points do not free the memory of a value if its statement fails or if no input
// takes the value. This class marks exactly this memory, so that LeakSanitizer does not report it.
// A suppression by the name of a function would also hide the memory of values that a scene took
// and forgot to free.
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

  /// Called when the memory of a value was allocated. If there is an earlier value, it was not
  /// assigned, and its memory is marked.
  void hold(void* memory) noexcept {
    keep();
    memory_ = memory;
  }
  /// Called when an assignment ends without an exception. `isAssigned` states whether the scene
  /// took ownership of the value.
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
