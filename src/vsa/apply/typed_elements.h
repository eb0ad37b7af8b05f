// TypedElements: how far the elements of an array are known to be typed, so that filling an array
// one element after another does not look at all of them each time. Internal; the door is vsa.h.
#pragma once

#include <cstdint>
#include <unordered_map>

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

class TypedElements {
 public:
  /// The first element of `array` that may be untyped still. What is known of an array holds only
  /// as long as the last element known to be typed is where it was: a host may have changed it.
  template <class IsTyped>
  std::uint64_t firstUnknown(interfaces::IInput* array, const IsTyped& isTyped) const {
    const auto known = known_.find(array);
    if (known == known_.end()) return 0;
    const auto [count, last] = known->second;
    if (array->count() < count || array->element(count - 1) != last) return 0;
    return isTyped(*last) ? count : 0;
  }

  /// Every element that `array` has now is typed.
  void remember(interfaces::IInput* array) {
    const std::uint64_t count = array->count();
    if (count != 0) known_[array] = {count, array->element(count - 1)};
  }

 private:
  struct Known {
    std::uint64_t count;
    interfaces::IInput* last;
  };
  std::unordered_map<interfaces::IInput*, Known> known_;
};

}  // namespace zn::korvo_sdk::impl
