// ArrayState: the array that the reader has after the statements written so far. Internal.
//
// The first statement about an element creates the array and sets its element type; a link sets
// none. The element type determines which elements can follow. So whether a text can carry an
// element depends on the elements before it.
#pragma once

#include <cstdint>

#include <vsa/model/input.h>
#include "write/walk/input_form.h"

namespace vsa::impl {

class ArrayState {
 public:
  /// `array` is the array of the scene, `start` what the reader has of it before the first element.
  /// `isNamed`: it is an input of a node or a member, and not an element of another array. A named
  /// array gets its element type from the statement that creates it, an element from any statement.
  ArrayState(zn::korvo_sdk::Input& array, const Start& start, bool isNamed);

  /// Whether the statement of a later element creates this element, too.
  bool isMadeByLater(std::uint64_t index) const { return index < firstWritten_; }
  /// What the reader has of the next element before its first statement.
  Start startOfElement() const;
  /// Accounts for the statement of the next element, which has the type of `startOfElement` if that
  /// exists. Returns null, or why the element cannot have its type there; then nothing has changed.
  const char* add(const zn::korvo_sdk::Input& element, Form form);
  /// Whether the array has the element type `type` now.
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
