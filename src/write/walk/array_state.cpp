#include "write/walk/array_state.h"

#include <algorithm>

#include "write/walk/reasons.h"

namespace vsa::impl {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::Input;

namespace {

// The maximum number of elements that the statement of a later element may create. Elements that no
// statement uses count towards a limit of the scene into which the text is read (see
// Scene::emptyElementLimit).
constexpr std::uint64_t MAX_MADE_BY_LATER = 1024;

bool isBare(Input& element) {
  return element.type() == AttrType::Array && element.count() == 0 &&
         element.elementType() == AttrType::Null && element.connection() == nullptr;
}

/// The index of the first element of an array of arrays that has elements itself. All elements
/// before it must be bare: empty arrays with neither an element type nor a connection. The
/// statements of that element also create the bare elements, so the bare elements need no "[]",
/// which causes a message. Returns 0 if there is no such element.
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

// A link is always possible: its statement appends an element of the array's element type, and a
// reference changes an element of type Null to Node. The caller has checked that an element of a
// typed array has the array's element type.
bool ArrayState::takesValue(AttrType type) const {
  return type == elementType_ || !isNamed_ || !exists_;
}

const char* ArrayState::add(const Input& element, Form form) {
  const AttrType type = element.type();
  const bool isLink = form == Form::Link || form == Form::Reference;
  if (!isLink && !takesValue(type)) return reasons::MIXED_ELEMENT;
  if (type == AttrType::Buffer) {
    if (form == Form::Value && hasUntypedBuffer_) return reasons::LATE_UNTYPED_BUFFER;
    if (isLink) hasUntypedBuffer_ = true;  // a link leaves the element without a buffer
  }
  if (!isLink) elementType_ = type;
  exists_ = true;
  return nullptr;
}

}  // namespace vsa::impl
