// InputImpl: sets types and values, and frees values.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "scene/model/input_impl.h"
#include "scene/model/scene_storage.h"

namespace zn::korvo_sdk {

// Changes a Null input to another type with the zero value of that type. Does nothing if the input
// has a type.
void InputImpl::become(AttrType type) noexcept {
  if (typeOf() != AttrType::Null) return;
  type_ = static_cast<std::uint8_t>(type);
  value_.integer = 0;
}

// --- structure ---

void InputImpl::set(const AttrData& structure) {
  if (structure.type == AttrType::Array) {
    become(AttrType::Array);
    setElementType(static_cast<AttrType>(structure.elementType));
  } else if (structure.type == AttrType::Buffer) {
    become(AttrType::Buffer);
    if (typeOf() == AttrType::Buffer) {
      setBuffer({nullptr, 0, 0, static_cast<DataType>(structure.elementType), 0});
    }
  } else if (structure.type == AttrType::Object) {
    become(AttrType::Object);
  }
}

void InputImpl::setElementType(AttrType type) {
  if (typeOf() == AttrType::Array && (type != AttrType::Null || value_.elements != nullptr)) {
    if (elementType() != type) elements().typedPrefix = 0;
    elements().type = type;
    if (type == AttrType::Null) becomeUntyped();
  }
}

// Whether this element is typed, so that the reader need not set its type. `listType` is the
// element type of the array that contains this element. Three kinds of elements are not typed: a
// Null element, a buffer without an element type in an array of buffers, and an array without an
// element type in an array of arrays.
bool InputImpl::isTypedElement(AttrType listType) const noexcept {
  if (typeOf() == AttrType::Null) return false;
  if (typeOf() != listType) return true;
  if (listType == AttrType::Buffer) return bufferType() != DataType::Null;
  return listType != AttrType::Array || elementType() != AttrType::Null;
}

std::uint64_t InputImpl::typedPrefix() noexcept {
  if (typeOf() != AttrType::Array || value_.elements == nullptr) return 0;
  ElementList& list = *value_.elements;
  while (list.typedPrefix < list.inputs.size &&
         list.inputs[list.typedPrefix]->isTypedElement(list.type)) {
    ++list.typedPrefix;
  }
  return list.typedPrefix;
}

// Excludes this element and the elements after it from the typed prefix of the array. Called when
// this element has lost its type, or the type of its own elements. Does nothing if this input is
// not an element, or was removed from its array.
void InputImpl::becomeUntyped() noexcept {
  if (!isElement_ || parent_.input->element(index_) != this) return;
  std::uint64_t& prefix = parent_.input->value_.elements->typedPrefix;
  prefix = std::min<std::uint64_t>(prefix, index_);
}

// --- values ---

// Assigns a value. A Null input first takes the type of the value, except the type Object. If the
// types then differ, the value is not assigned and its memory is freed. Each branch takes ownership
// of the value's memory before the branch can throw.
void InputImpl::assign(const AttrData& value) {
  markUsed();
  if (value.type != AttrType::Object) become(value.type);
  const bool fits = value.type == typeOf();
  if (value.type == AttrType::String) {
    assignString(value.payload.string, fits);
  } else if (value.type == AttrType::Buffer) {
    assignBuffer(value.payload.buffer, fits);
  } else if (fits) {
    assignPlain(value);
  }
}

// The maximum size of a string that is copied into the pool, including its NUL. The input takes
// ownership of the memory of a longer string instead, because the copy would take longer than a new
// block from malloc. This exception saves 2 % of the instructions of the benchmark text.
constexpr std::size_t MAX_COPIED_BYTES = 512;
static_assert(MAX_COPIED_BYTES <= SmallBlockPool::MAX_BYTES);

// Takes ownership of `text`, which may be null for an empty string. Copies a short string into the
// pool and frees the memory of `text`, so that malloc can reuse it for the next string. If `fits`
// is false, only frees `text`.
void InputImpl::assignString(char* text, bool fits) {
  std::unique_ptr<char, decltype(&std::free)> memory(text, &std::free);
  if (!fits) return;
  const std::size_t bytes = text == nullptr ? 0 : std::strlen(text) + 1;
  const bool isShort = bytes <= MAX_COPIED_BYTES;
  char* kept = nullptr;
  if (!isShort) {
    kept = memory.release();
  } else if (bytes > 1) {
    kept = static_cast<char*>(storage().pool.allocate(bytes));
    std::memcpy(kept, text, bytes);
  }
  freeString();
  value_.string = kept;
  isLongString_ = !isShort;
}

void InputImpl::freeString() noexcept {
  if (isLongString_) {
    std::free(value_.string);
  } else if (value_.string != nullptr) {
    storage().pool.deallocate(value_.string, std::strlen(value_.string) + 1);
  }
}

bool InputImpl::holdsBuffer(bool /*flag*/) const {
  return typeOf() == AttrType::Buffer;
}

DataType InputImpl::bufferType() const {
  return buffer().type;
}

void InputImpl::assignBuffer(const BufferValue& buffer, bool fits) {
  std::unique_ptr<unsigned char, decltype(&std::free)> memory(buffer.memory, &std::free);
  if (!fits) return;
  setBuffer(buffer);
  // The input owns the memory now.
  static_cast<void>(memory.release());
}

// Sets the buffer and takes ownership of its memory, unless it throws std::bad_alloc.
void InputImpl::setBuffer(const BufferValue& buffer) {
  if (value_.buffer == nullptr) {
    value_.buffer = new BufferValue(buffer);
  } else {
    std::free(value_.buffer->memory);
    *value_.buffer = buffer;
  }
  if (buffer.type == DataType::Null) becomeUntyped();
}

void InputImpl::assignPlain(const AttrData& value) {
  switch (value.type) {
    case AttrType::Bool:
      value_.boolean = value.payload.boolean;
      break;
    case AttrType::Int:
    case AttrType::UInt:
      value_.integer = value.payload.integer;
      break;
    case AttrType::Real:
      value_.real = value.payload.real;
      break;
    default:
      assignComponents(value.payload.components);
      break;
  }
}

void InputImpl::assignComponents(const double* components) {
  const unsigned count = componentCount(typeOf());
  if (count == 0) return;
  if (value_.components == nullptr) {
    value_.components = static_cast<double*>(storage().pool.allocate(count * sizeof(double)));
  }
  std::copy_n(components, count, value_.components);
}

// Frees the memory of the value, except memory from the scene's pool. The pool frees its own
// memory.
void InputImpl::freeValue() noexcept {
  switch (typeOf()) {
    case AttrType::String:
      if (isLongString_) std::free(value_.string);
      break;
    case AttrType::Buffer:
      if (value_.buffer != nullptr) std::free(value_.buffer->memory);
      delete value_.buffer;
      break;
    case AttrType::Array:
      delete value_.elements;
      break;
    case AttrType::Object:
      delete value_.members;
      break;
    default:
      break;
  }
}

}  // namespace zn::korvo_sdk
