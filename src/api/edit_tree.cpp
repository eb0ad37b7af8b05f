// The functions of vsa::Node and vsa::Input that add and remove inputs, elements and members.
#include <limits>
#include <utility>

#include <vsa/edit.h>
#include "api/edit_guard.h"
#include "api/edit_type.h"

namespace vsa {

namespace {

using detail::guarded;
using zn::korvo_sdk::AttrData;
using PlainInput = zn::korvo_sdk::Input;
using PlainNode = zn::korvo_sdk::Node;

constexpr std::uint64_t MAX_ELEMENTS = std::numeric_limits<std::uint32_t>::max();

AttrData structureOf(ValueType type, ValueType elementType) {
  AttrData structure;
  structure.type = type;
  structure.elementType = static_cast<std::int32_t>(elementType);
  return structure;
}

bool isAtDepthLimit(const PlainInput& input) {
  return input.level() >= input.owner()->scene()->depthLimit();
}

// Removes the limit of empty elements while this object exists. That limit is for elements that
// exist only because a text used a higher index. It is not for elements that a program appends.
class NoElementLimit {
 public:
  explicit NoElementLimit(zn::korvo_sdk::Scene& scene) noexcept
      : scene_(scene), limit_(scene.emptyElementLimit()) {
    scene_.setEmptyElementLimit(std::numeric_limits<std::uint64_t>::max());
  }
  NoElementLimit(const NoElementLimit&) = delete;
  NoElementLimit& operator=(const NoElementLimit&) = delete;
  ~NoElementLimit() { scene_.setEmptyElementLimit(limit_); }

 private:
  zn::korvo_sdk::Scene& scene_;
  const std::uint64_t limit_;
};

// Sets the value of a named input. `owner` is a node, or an object whose member is set. Adds the
// input if it does not exist. If the function adds it and then fails, it removes the input again.
// After OutOfMemory, an owner that had the type Null may be an object without members.
template <class Owner>
Status setNamed(const Owner& owner, TextParameter name, const Value& value) noexcept {
  if (const Status status = detail::checkValue(value); !status) return status;
  const bool isNew = !owner[name];
  const Added<Input> added = owner.add(name);
  if (!added) return added.status;
  const Status status = added.set(value);
  if (!status && isNew) static_cast<void>(owner.remove(name));
  return status;
}

PlainInput* appendTo(PlainInput& array) {
  const NoElementLimit scope(*array.owner()->scene());
  const std::uint64_t index = array.count();
  array.appendElement();
  PlainInput* const made = array.element(index);
  made->retain();  // the element no longer counts as empty
  return made;
}

// Checks whether the array can have `count` elements. Returns None or the reason why it cannot.
Status checkCount(const PlainInput* array, std::uint64_t count) {
  if (const Status status = detail::checkInput(array); !status) return status;
  if (array->type() != ValueType::Array) return EditError::NotAnArray;
  if (count > MAX_ELEMENTS) return EditError::TooMany;
  const bool isTooDeep = count > array->count() && isAtDepthLimit(*array);
  return isTooDeep ? EditError::TooDeep : EditError::None;
}

Status checkAppend(const PlainInput* array) {
  return checkCount(array, array != nullptr ? array->count() + 1 : 0);
}

// Appends an element and calls `set(element)`. If `set` fails, removes the element again.
template <class Set>
Status appendWith(PlainInput* array, const Set& set) noexcept {
  return guarded([&]() -> Status {
    if (const Status status = checkAppend(array); !status) return status;
    const Status status = set(Input(appendTo(*array)));
    if (!status) array->truncate(array->count() - 1);
    return status;
  });
}

}  // namespace

// --- arrays ---

Status Input::makeArray(ValueType elementType) const noexcept {
  return guarded([&]() -> Status {
    PlainInput* const input = mutablePlain();
    if (const Status status = detail::checkInput(input); !status) return status;
    const auto number = static_cast<int>(elementType);
    if (elementType == ValueType::Node || number < 0 || number >= zn::korvo_sdk::ATTR_TYPE_COUNT) {
      return EditError::BadElementType;
    }
    if (const Status status = detail::checkTakes(*input, ValueType::Array); !status) return status;
    if (input->type() == ValueType::Array && input->elementType() == elementType) {
      input->truncate(0);
      return {};
    }
    if (input->parent() == nullptr && input->owner()->isDeclared()) return EditError::DeclaredType;
    input->clearValue();
    input->set(structureOf(ValueType::Array, elementType));
    return {};
  });
}

Added<Input> Input::append() const noexcept {
  return guarded([&]() -> Added<Input> {
    if (const Status status = checkAppend(plain()); !status) return status;
    if (plain()->elementType() == ValueType::Buffer) return EditError::BadBufferType;
    return Input(appendTo(*mutablePlain()));
  });
}

Status Input::append(const Value& value) const noexcept {
  return appendWith(mutablePlain(), [&](const Input& element) { return element.set(value); });
}

Status Input::appendBufferBytes(ElementType type, std::span<const std::byte> bytes) const noexcept {
  return appendWith(mutablePlain(),
                    [&](const Input& element) { return element.setBufferBytes(type, bytes); });
}

Status Input::appendBuffer(ElementType type, std::uint64_t count,
                           BufferMemory memory) const noexcept {
  return appendWith(mutablePlain(), [&](const Input& element) {
    return element.setBuffer(type, count, std::move(memory));
  });
}

Status Input::resize(std::uint64_t count) const noexcept {
  PlainInput* const array = mutablePlain();
  if (const Status status = checkCount(array, count); !status) return status;
  const std::uint64_t before = array->count();
  if (count > before && array->elementType() == ValueType::Buffer) return EditError::BadBufferType;
  const Status status = guarded([&]() -> Status {
    while (array->count() < count) appendTo(*array);
    return {};
  });
  array->truncate(status ? count : before);
  return status;
}

// --- objects ---

Status Input::makeObject() const noexcept {
  return guarded([&]() -> Status {
    PlainInput* const input = mutablePlain();
    if (const Status status = detail::checkInput(input); !status) return status;
    if (const Status status = detail::checkTakes(*input, ValueType::Object); !status) return status;
    if (detail::isDeclaredNull(*input)) return EditError::DeclaredType;
    input->clearValue();
    input->set(structureOf(ValueType::Object, ValueType::Null));
    return {};
  });
}

Added<Input> Input::add(TextParameter member) const noexcept {
  return guarded([&]() -> Added<Input> {
    PlainInput* const object = mutablePlain();
    if (const Status status = detail::checkInput(object); !status) return status;
    if (object->type() != ValueType::Object && object->type() != ValueType::Null) {
      return EditError::NotAnObject;
    }
    if (PlainInput* const existing = object->memberNamed(member)) return Input(existing);
    if (const Status status = detail::checkTakes(*object, ValueType::Object); !status)
      return status;
    if (const Status status = detail::checkInputName(*object->owner(), member); !status) {
      return status;
    }
    if (isAtDepthLimit(*object)) return EditError::TooDeep;
    return Input(object->createInput(zn::String::copyOf(member), ValueType::Null));
  });
}

Status Input::set(TextParameter member, const Value& value) const noexcept {
  return setNamed(*this, member, value);
}

Status Input::remove(TextParameter member) const noexcept {
  if (const Status status = detail::checkInput(plain()); !status) return status;
  PlainInput* const object = mutablePlain();
  PlainInput* const found = object->memberNamed(member);
  if (found == nullptr) return EditError::Missing;
  object->removeMember(found);
  if (object->memberCount() == 0 && detail::isDeclaredNull(*object)) object->clearValue();
  return {};
}

// --- nodes ---

Added<Input> Node::add(TextParameter input) const noexcept {
  return guarded([&]() -> Added<Input> {
    PlainNode* const node = mutablePlain();
    if (const Status status = detail::checkNode(node); !status) return status;
    if (PlainInput* const existing = node->inputNamed(input)) return Input(existing);
    if (const Status status = detail::checkInputName(*node, input); !status) return status;
    if (node->scene()->depthLimit() == 0) return EditError::TooDeep;
    const zn::String name = zn::String::copyOf(input);
    PlainInput* const made =
        node->isDeclared() ? node->input(name) : node->createInput(name, ValueType::Null);
    if (made == nullptr) return EditError::NotDeclared;
    return Input(made);
  });
}

Status Node::set(TextParameter input, const Value& value) const noexcept {
  return setNamed(*this, input, value);
}

Status Node::remove(TextParameter input) const noexcept {
  if (const Status status = detail::checkNode(plain()); !status) return status;
  PlainInput* const found = mutablePlain()->inputNamed(input);
  if (found == nullptr) return EditError::Missing;
  mutablePlain()->removeInput(found);
  return {};
}

}  // namespace vsa
