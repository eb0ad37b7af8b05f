#include "write/walk/array_state.h"

#include <algorithm>

#include "write/walk/reasons.h"

namespace vsa::impl {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::Input;

namespace {

// The maximum number of elements that the statement of a later element may create. Each of them
// counts towards the limit of the scene that reads the text (see Scene::emptyElementLimit).
constexpr std::uint64_t MAX_MADE_BY_LATER = 1024;

bool isBare(Input& element) {
  return element.type() == AttrType::Array && element.count() == 0 &&
         element.elementType() == AttrType::Null && element.connection() == nullptr;
}

/// Finds the first element that has elements of its own, in an array of arrays. Its statements also
/// create all elements before it. So these need no statement "[]", which would cause a message.
/// This is possible only if they are empty arrays without an element type and without a connection.
/// Returns the index of that element. Returns 0 if there is no such element, or if an element
/// before it has another form.
std::uint64_t firstWritten(Input& array) {
  const std::uint64_t end = std::min(array.count(), MAX_MADE_BY_LATER);
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

// Whether a statement with a value can create or set an element of this type. If the array has an
// element type in the scene of the reader, this type must be equal: the caller has checked this. If
// the array has no element type yet, the statement must also set the element type. For a named
// array, only the statement that creates the array does so. For an array that is an element of
// another array, every statement does so. Links need no such check: a link appends an element with
// the element type of the array, and a reference changes an element of type Null to Node.
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
