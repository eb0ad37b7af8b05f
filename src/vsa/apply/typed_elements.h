// TypedElements: gives an element type to the elements of arrays of buffers and of arrays that have
// none. Internal.
#pragma once

#include <cstdint>
#include <unordered_map>

#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Remembers how many elements of each array have a type, so that an array that is filled one
/// element after another takes linear time. The scene may empty an element itself: each call looks
/// at up to RECHECKED elements that had a type, in turn.
class TypedElements {
 public:
  /// Elements with a type that a call looks at again.
  static constexpr std::uint64_t RECHECKED = 128;

  /// Sets the elements of `array` that are still empty: buffers without a DataType for an array of
  /// buffers, arrays without an element type for an array of arrays. Does nothing for an array of
  /// another type. `countBefore` is the size of the array before the statement appended to it;
  /// `elementType` is the DataType that the empty values carry.
  void setEmptyElements(interfaces::IInput& array, std::uint64_t countBefore,
                        std::int32_t elementType);

 private:
  // An entry holds as long as the last of its elements is where it was.
  struct Known {
    std::uint64_t count = 0;  // elements that had a type when they were looked at last
    interfaces::IInput* last = nullptr;
    std::uint64_t recheck = 0;  // where the next look at these begins
  };

  static void remember(interfaces::IInput& array, Known& known);

  std::unordered_map<interfaces::IInput*, Known> known_;
};

}  // namespace zn::korvo_sdk::impl
