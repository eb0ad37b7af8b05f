// TypedElements: sets the types of untyped elements in arrays of buffers and arrays of arrays.
// Internal.
#pragma once

#include <cstdint>
#include <unordered_map>

#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Sets the types of untyped elements. Stores for each array how many of its elements have a type,
/// so that a call checks only the elements after them. If each statement appends one element to an
/// array, filling the array therefore takes linear time. A scene may also remove the type of an
/// element without a statement. Each call therefore rechecks up to RECHECKED elements that had a
/// type. The next call continues after these elements.
class TypedElements {
 public:
  /// The maximum number of typed elements that a call rechecks.
  static constexpr std::uint64_t RECHECKED = 128;

  /// Sets the type of the untyped elements of `array`. In an array of buffers, an element is
  /// untyped if it has no DataType. In an array of arrays, it is untyped if it has no element type.
  /// Does nothing for any other array. `countBefore` is the size of `array` before the statement
  /// appended elements. `elementType` is the type to set: a DataType for buffers, an AttrType for
  /// arrays.
  void setEmptyElements(interfaces::IInput& array, std::uint64_t countBefore,
                        std::int32_t elementType);

 private:
  // The cached state of one array. It is valid while `last` is the element at index `count - 1`.
  struct Known {
    std::uint64_t count = 0;  // The number of elements that had a type at the last check.
    interfaces::IInput* last = nullptr;
    // The index at which the next recheck starts.
    std::uint64_t recheck = 0;
  };

  std::unordered_map<interfaces::IInput*, Known> known_;
};

}  // namespace zn::korvo_sdk::impl
