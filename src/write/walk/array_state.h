// ArrayState: the state that an array has in the scene of a reader after all statements that were
// written so far. Internal.
//
// The first statement about an element creates the array if it does not exist yet. If this
// statement is not a link, it also sets the element type of the new array. The element type
// determines which elements can follow. So whether a text can represent an element depends on the
// elements before it.
#pragma once

#include <cstdint>

#include <vsa/model/input.h>
#include "write/walk/input_form.h"

namespace vsa::impl {

class ArrayState {
 public:
  /// Creates the state before the first element of `array` is written. `start` is the state that
  /// the array then has in the scene of the reader. `isNamed` is false if the array is an element
  /// of another array, and true otherwise. A named array gets its element type from the statement
  /// that creates it. An array that is an element gets its element type from any statement.
  ArrayState(zn::korvo_sdk::Input& array, const Start& start, bool isNamed);

  /// Whether the statement of a later element also creates this element.
  bool isMadeByLater(std::uint64_t index) const { return index < firstWritten_; }
  /// Returns the state of the next element in the scene of the reader, before the first statement
  /// of the element.
  Start startOfElement() const;
  /// Changes the state by the statement of the next element. If `startOfElement` returns an element
  /// that exists, `element` must have its type. Returns null, or the reason why the array cannot
  /// contain the element. If it returns a reason, the state does not change.
  const char* add(const zn::korvo_sdk::Input& element, Form form);
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
