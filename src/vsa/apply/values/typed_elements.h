// TypedElements: sets the type of untyped elements in arrays of buffers and arrays of arrays.
// Internal.
#pragma once

#include <cstdint>
#include <unordered_map>

#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Caches the number of elements with a type in each array, so that filling an array one element at
/// a time takes linear time. A scene may empty an element itself, so each call rechecks up to
/// RECHECKED elements that had a type, in rotation.
class TypedElements {
 public:
  /// The number of typed elements that a call rechecks.
  static constexpr std::uint64_t RECHECKED = 128;

  /// Sets the elements of `array` that are still empty: buffers without a DataType for an array of
  /// buffers, arrays without an element type for an array of arrays. Does nothing for an array of
  /// another type. `countBefore` is the size of the array before the statement appended to it;
  /// `elementType` is the DataType, or the AttrType of an array's elements, that they get.
  void setEmptyElements(interfaces::IInput& array, std::uint64_t countBefore,
                        std::int32_t elementType);

 private:
  // An entry is valid while `last` is still the element at index `count - 1`.
  struct Known {
    std::uint64_t count = 0;  // elements that had a type at the last check
    interfaces::IInput* last = nullptr;
    std::uint64_t recheck = 0;  // index at which the next recheck starts
  };

  static void remember(interfaces::IInput& array, Known& known);

  std::unordered_map<interfaces::IInput*, Known> known_;
};

}  // namespace zn::korvo_sdk::impl
