// The array that the statements written so far make of an array of the scene. Internal.
//
// The first statement about an element creates the array and gives it its element type; a link
// gives none. From then on the element type decides which elements can follow, so whether a text
// can carry an element depends on those before it.
#pragma once

#include <cstdint>

#include <vsa/model/input.h>
#include "write/walk/input_form.h"

namespace vsa::impl {

class ArrayState {
 public:
  /// `start` is the array before its first element. The reader looks a named array up by each
  /// statement; an element of another array gets its element type at any time.
  ArrayState(zn::korvo_sdk::Input& array, const Start& start, bool isNamed);

  /// Whether the statement of an element that is written later creates the element, too.
  bool isMadeByLater(std::uint64_t index) const { return index < firstWritten_; }
  /// What the next element is before its first statement.
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
