// The functions of vsa::Input that set values and links.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

#include <vsa/edit.h>
#include <vsa/text_rules.h>
#include "api/edit_guard.h"
#include "api/edit_type.h"

namespace vsa {

namespace {

using detail::guarded;
using zn::korvo_sdk::AttrData;
using PlainInput = zn::korvo_sdk::Input;

// Stores `value` in `record`. Call the function only for a value that a text can represent (see
// checkValue). The memory of a string is from malloc, and the input to which the record is assigned
// frees it. Returns false if there is no memory for the string.
bool fill(AttrData& record, const Value& value) {
  record.type = value.type();
  switch (value.type()) {
    case ValueType::Bool:
      record.payload.boolean = value.boolean();
      return true;
    case ValueType::Int:
    case ValueType::UInt:
      record.payload.integer = value.integer();
      return true;
    case ValueType::Real:
      record.payload.real = value.real();
      return true;
    case ValueType::String: {
      const std::size_t length = value.text().size();
      record.payload.string = static_cast<char*>(std::malloc(length + 1));
      if (record.payload.string == nullptr) return false;
      value.text().copy(record.payload.string, length);
      record.payload.string[length] = '\0';
      return true;
    }
    default:
      std::ranges::copy(value.tuple()->components(), record.payload.components);
      return true;
  }
}

Status checkLink(const PlainInput& input, NodeView node) noexcept {
  if (const Status status = detail::checkNode(node.plain()); !status) return status;
  return node.plain()->scene() == input.owner()->scene() ? EditError::None : EditError::OtherScene;
}

Status setNode(PlainInput& input, zn::korvo_sdk::Node* node) {
  if (const Status status = detail::checkTakes(input, ValueType::Node); !status) return status;
  detail::makeReadyFor(input, ValueType::Node);
  input.setNode(node);
  return {};
}

}  // namespace

Status Input::set(const Value& value) const noexcept {
  return guarded([&]() -> Status {
    PlainInput* const input = mutablePlain();
    if (const Status status = detail::checkInput(input); !status) return status;
    if (const Status status = detail::checkTakes(*input, value.type()); !status) return status;
    if (const Status status = detail::checkValue(value); !status) return status;
    AttrData record;
    if (!fill(record, value)) return EditError::OutOfMemory;
    detail::makeReadyFor(*input, value.type());
    input->assign(record);
    return {};
  });
}

Status Input::setBufferBytes(ElementType type, std::span<const std::byte> bytes) const noexcept {
  if (!zn::korvo_sdk::isBufferElement(type)) return EditError::BadBufferType;
  const std::size_t elementBytes = zn::korvo_sdk::elementBytes(type);
  if (bytes.size() % elementBytes != 0) return EditError::BufferSize;
  if (const Status status = detail::checkInput(plain()); !status) return status;
  BufferMemory memory = allocateBuffer(bytes.size());
  if (memory == nullptr && !bytes.empty()) return EditError::OutOfMemory;
  if (!bytes.empty()) std::memcpy(memory.get(), bytes.data(), bytes.size());
  return setBuffer(type, bytes.size() / elementBytes, std::move(memory));
}

Status Input::setBuffer(ElementType type, std::uint64_t count, BufferMemory memory) const noexcept {
  return guarded([&]() -> Status {
    PlainInput* const input = mutablePlain();
    if (const Status status = detail::checkInput(input); !status) return status;
    if (!zn::korvo_sdk::isBufferElement(type)) return EditError::BadBufferType;
    const std::size_t elementBytes = zn::korvo_sdk::elementBytes(type);
    if (count > std::numeric_limits<std::size_t>::max() / elementBytes)
      return EditError::BufferSize;
    if (memory == nullptr && count != 0) return EditError::BufferSize;
    const std::size_t bytes = static_cast<std::size_t>(count) * elementBytes;
    if (const Status status =
            checkBuffer(type, {reinterpret_cast<std::byte*>(memory.get()), bytes});
        !status) {
      return status;
    }
    if (const Status status = detail::checkTakesBuffer(*input, type); !status) return status;
    AttrData record;
    record.type = ValueType::Buffer;
    record.payload.buffer = {nullptr, count, bytes, type, 0};
    detail::makeReadyFor(*input, ValueType::Buffer);
    record.payload.buffer.memory = count != 0 ? memory.release() : nullptr;
    input->assign(record);
    return {};
  });
}

Status Input::clear() const noexcept {
  PlainInput* const input = mutablePlain();
  if (const Status status = detail::checkInput(input); !status) return status;
  if (const Status status = detail::checkTakes(*input, ValueType::Null); !status) return status;
  input->clearValue();
  return {};
}

Status Input::refer(NodeView node) const noexcept {
  return guarded([&]() -> Status {
    PlainInput* const input = mutablePlain();
    if (const Status status = detail::checkInput(input); !status) return status;
    if (const Status status = checkLink(*input, node); !status) return status;
    return setNode(*input, const_cast<zn::korvo_sdk::Node*>(node.plain()));
  });
}

Status Input::referToNone() const noexcept {
  return guarded([&]() -> Status {
    PlainInput* const input = mutablePlain();
    const Status status = detail::checkInput(input);
    return status ? setNode(*input, nullptr) : status;
  });
}

Status Input::connect(NodeView node, TextParameter output) const noexcept {
  return guarded([&]() -> Status {
    PlainInput* const input = mutablePlain();
    if (const Status status = detail::checkInput(input); !status) return status;
    if (const Status status = checkLink(*input, node); !status) return status;
    if (!isOutputName(output)) return EditError::BadName;
    const zn::String name = zn::String::copyOf(output);
    const zn::String type = zn::String::copyOf(node.type());
    if (zn::korvo_sdk::updateOutputName(type, name) != name) return EditError::FormerName;
    zn::korvo_sdk::Output* const found =
        const_cast<zn::korvo_sdk::Node*>(node.plain())->output(name);
    if (found == nullptr) return EditError::NotDeclared;
    input->connect(found);
    return {};
  });
}

Status Input::disconnect() const noexcept {
  if (const Status status = detail::checkInput(plain()); !status) return status;
  mutablePlain()->disconnect();
  return {};
}

}  // namespace vsa
