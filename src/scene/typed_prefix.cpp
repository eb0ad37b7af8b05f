#include "scene/typed_prefix.h"

#include <atomic>

namespace zn::korvo_sdk {

namespace {

std::atomic<TypedPrefixOf> prefixOf{nullptr};

}  // namespace

void setTypedPrefix(TypedPrefixOf function) noexcept {
  prefixOf.store(function, std::memory_order_relaxed);
}

std::uint64_t typedPrefixOf(interfaces::IInput& array) noexcept {
  const TypedPrefixOf function = prefixOf.load(std::memory_order_relaxed);
  return function == nullptr ? 0 : function(array);
}

}  // namespace zn::korvo_sdk
