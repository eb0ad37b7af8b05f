// Input: removes values, elements and members.
#include <algorithm>

#include "scene/model/input_impl.h"
#include "scene/model/scene_storage.h"

namespace zn::korvo_sdk {

void Input::clearValue() noexcept {
  static_cast<InputImpl&>(*this).clearValue();
}

void Input::truncate(std::uint64_t count) noexcept {
  InputImpl& array = static_cast<InputImpl&>(*this);
  if (array.typeOf() != AttrType::Array) return;
  while (array.count() > count) array.takeLastChild()->clearValue();
}

void Input::removeMember(Input* member) noexcept {
  if (member == nullptr || member->isRemoved()) return;
  InputImpl& removed = static_cast<InputImpl&>(*member);
  if (removed.parentInput() != this || impl().typeOf() != AttrType::Object) return;
  NamedList<InputImpl>& members = *impl().value_.members;
  members.remove(members.positionOf(&removed));
  removed.remove();
}

void InputImpl::remove() noexcept {
  isRemoved_ = true;
  connection_ = nullptr;
  clearValue();
}

// Removes all descendants and the value. The input then has the type Null and keeps its connection.
// Repeatedly removes the last child, depth first. Does not recurse, because inputs may nest 65,535
// levels deep.
void InputImpl::clearValue() noexcept {
  InputImpl* input = this;
  while (true) {
    if (InputImpl* const child = input->takeLastChild(); child != nullptr) {
      input = child;
      continue;
    }
    input->clearOwnValue();
    if (input == this) return;
    input = input->parent_.input;
  }
}

// Removes the last element or member, marks it as removed, disconnects it and returns it. The
// caller clears its value. Returns null if the input has no element and no member.
InputImpl* InputImpl::takeLastChild() noexcept {
  InputImpl* child = nullptr;
  if (const std::uint64_t elementCount = count(); elementCount != 0) {
    child = value_.elements->inputs[elementCount - 1];
    ElementList& list = *value_.elements;
    list.typedPrefix = std::min(list.typedPrefix, --list.inputs.size);
  } else if (const std::uint64_t members = memberCount(); members != 0) {
    child = value_.members->at(members - 1);
    value_.members->remove(members - 1);
  }
  if (child != nullptr) {
    child->isRemoved_ = true;
    child->connection_ = nullptr;
  }
  return child;
}

// Clears the value of an input that has no elements and no members. The input then has the type
// Null.
void InputImpl::clearOwnValue() noexcept {
  markUsed();
  SmallBlockPool& pool = storage().pool;
  const unsigned components = componentCount(typeOf());
  if (components != 0 && value_.components != nullptr) {
    pool.deallocate(value_.components, components * sizeof(double));
  } else if (typeOf() == AttrType::String && !isLongString_) {
    freeString();
  } else if (typeOf() == AttrType::Object && value_.members != nullptr) {
    value_.members->clear(pool);
  }
  freeValue();
  type_ = static_cast<std::uint8_t>(AttrType::Null);
  value_.integer = 0;
  isLongString_ = false;
  becomeUntyped();
}

}  // namespace zn::korvo_sdk
