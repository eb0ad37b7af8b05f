#include "write/walk/array_state.h"

#include <algorithm>

#include "write/walk/reasons.h"

namespace vsa::impl {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::Input;

namespace {

// The maximum number of elements that the statement of a later element may create. There is a
// maximum, because these elements count towards the limit of empty elements of the scene that reads
// the text (see Scene::emptyElementLimit).
constexpr std::uint64_t MAX_CREATED_BY_LATER = 1024;

bool isBare(Input& element) {
  return element.type() == AttrType::Array && element.count() == 0 &&
         element.elementType() == AttrType::Null && element.connection() == nullptr;
}

/// Finds the first element that has elements of its own, in an array of arrays. Returns its index.
/// The statements of this element also create all elements before it, so the elements before it
/// need no statement. (A statement "[]" would create an empty array, but the reader would report
/// it.) Exception: returns 0 if an element before it is not an empty array, has an element type or
/// has a connection, because such an element needs a statement. Also returns 0 if none of the first
/// MAX_CREATED_BY_LATER elements has elements.
std::uint64_t firstWritten(Input& array) {
  const std::uint64_t end = std::min(array.count(), MAX_CREATED_BY_LATER);
  for (std::uint64_t i = 0; i < end; ++i) {
    Input& element = static_cast<Input&>(*array.element(i));
    if (!isBare(element)) {
      return element.type() == AttrType::Array && element.count() > 0 ? i : 0;
    }
  }
  return 0;
}

}  // namespace

ArrayState::ArrayState(Input& array, const Start& start, bool isNamed)
    : elementType_(start.elementType), exists_(start.exists), isNamed_(isNamed) {
  if (array.elementType() == AttrType::Array && elementType_ == AttrType::Null) {
    firstWritten_ = firstWritten(array);
  }
}

Start ArrayState::startOfElement() const {
  Start start;
  start.exists = elementType_ != AttrType::Null;
  start.type = elementType_;
  return start;
}

// Whether a statement with a value can create or set an element of this type. If the array already
// has an element type in the scene of the reader, the caller has checked that the two types are
// equal. If the array has no element type yet, the statement must also set the element type. For a
// named array, only the statement that creates the array does so. For an array that is an element
// of another array, every statement does so. Links need no such check: a link appends an element
// with the element type of the array, and a reference changes an element of type Null to Node.
bool ArrayState::takesValue(AttrType type) const {
  return type == elementType_ || !isNamed_ || !exists_;
}

const char* ArrayState::add(const Input& element, Form form) {
  const AttrType type = element.type();
  const bool isLink = form == Form::Link || form == Form::Reference;
  if (!isLink && !takesValue(type)) return reasons::MIXED_ELEMENT;
  if (type == AttrType::Buffer) {
    if (form == Form::Value && hasUntypedBuffer_) return reasons::LATE_UNTYPED_BUFFER;
    if (isLink) hasUntypedBuffer_ = true;  // a link sets no type of buffer
  }
  if (!isLink) elementType_ = type;
  exists_ = true;
  return nullptr;
}

}  // namespace vsa::impl
