// ArrayState: the state of an array in a scene that has read the statements written so far.
// Internal.
//
// The first statement about an element creates the array. The statement also sets the element type
// of the array, unless it is a link. The element type determines which elements can follow. So
// whether a text can represent an element depends on the elements before it.
#pragma once

#include <cstdint>

#include <vsa/model/input.h>
#include "write/walk/input_form.h"

namespace vsa::impl {

class ArrayState {
 public:
  /// `array` is the array of the written scene. `start` is its state in the scene of the reader
  /// before the first element is written. `isNamed`: the array is an input of a node or a member,
  /// not an element of another array. A named array gets its element type from the statement that
  /// creates it. An array that is an element gets it from any statement.
  ArrayState(zn::korvo_sdk::Input& array, const Start& start, bool isNamed);

  /// Whether the statement of a later element creates this element, too.
  bool isMadeByLater(std::uint64_t index) const { return index < firstWritten_; }
  /// The state of the next element in the scene of the reader before its first statement.
  Start startOfElement() const;
  /// Updates the state for the statement of the next element. If `startOfElement` exists, the
  /// element must have its type. Returns null, or the reason why the array cannot have this
  /// element. In that case, the state does not change.
  const char* add(const zn::korvo_sdk::Input& element, Form form);
  /// Whether the array has the element type `type`.
  bool hasElementType(zn::korvo_sdk::AttrType type) const { return elementType_ == type; }

 private:
  bool takesValue(zn::korvo_sdk::AttrType type) const;

  zn::korvo_sdk::AttrType elementType_;
  bool exists_;
  bool isNamed_;
  bool hasUntypedBuffer_ = false;
  std::uint64_t firstWritten_ = 0;
};

}  // namespace vsa::impl
