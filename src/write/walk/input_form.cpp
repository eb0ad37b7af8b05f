#include "write/walk/input_form.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <span>

#include "scene/not_a_number.h"
#include "write/walk/reasons.h"

namespace vsa::impl {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::BufferValue;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::haveOtherNan;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::isOtherNan;

namespace {

// The plan for an input that already has the right value in the scene of the reader. Its statement
// is a link, because a link is the only form that does not change the value.
constexpr Plan LINK_ONLY{Form::Link};

Plan problem(const char* reason) {
  return {Form::Inside, reason};
}

/// Whether a statement can change the type of a declared input from Null to the type of `input`.
bool canBecome(Input& input) {
  if (input.type() == AttrType::Object) return input.memberCount() > 0;
  return input.type() == AttrType::Node;
}

Plan planOfArray(Input& array, const Start& start) {
  if (array.count() > 0) return {Form::Inside};
  if (array.elementType() == start.elementType && start.exists) return LINK_ONLY;
  if (array.elementType() == AttrType::Null) return {Form::EmptyArray};
  return problem(reasons::TYPED_EMPTY_ARRAY);
}

Plan planOfObject(Input& object, const Start& start) {
  if (object.memberCount() > 0) return {Form::Inside};
  return start.exists ? LINK_ONLY : Plan{Form::EmptyObject};
}

Plan planOfReal(double value) {
  if (value == std::numeric_limits<double>::infinity()) return problem(reasons::INFINITE_REAL);
  if (!std::isnan(value)) return {Form::Value};
  if (std::signbit(value) && !isOtherNan(value)) return {Form::Value};
  return {Form::Value, reasons::NAN_REAL, true};
}

std::span<const double> numbersOf(const Input& tuple) {
  return {tuple.components(), zn::korvo_sdk::componentCount(tuple.type())};
}

Plan planOfTuple(const Input& input) {
  if (haveOtherNan(numbersOf(input))) return {Form::Value, reasons::NAN_BITS, true};
  return {Form::Value};
}

bool hasDeclaredSize(const BufferValue& buffer) {
  const std::uint64_t bytes = zn::korvo_sdk::elementBytes(buffer.type);
  const bool fits = buffer.count <= buffer.bytes && buffer.bytes / bytes == buffer.count &&
                    buffer.bytes % bytes == 0;
  return fits && (buffer.count == 0 || buffer.memory != nullptr);
}

Plan planOfBuffer(const BufferValue& buffer, const Start& start) {
  if (buffer.count == 0 && start.exists && buffer.type == start.bufferType) return LINK_ONLY;
  if (buffer.type == DataType::Null) return problem(reasons::UNTYPED_BUFFER);
  if (start.bufferType != DataType::Null && buffer.type != start.bufferType) {
    return problem(reasons::DECLARED_TYPE);
  }
  if (!zn::korvo_sdk::isBufferElement(buffer.type)) return problem(reasons::HOST_ELEMENTS);
  if (!hasDeclaredSize(buffer)) return problem(reasons::BUFFER_SIZE);
  const auto* const bytes = reinterpret_cast<const std::byte*>(buffer.memory);
  if (haveOtherNan(buffer.type, {bytes, buffer.bytes}))
    return {Form::Value, reasons::NAN_BITS, true};
  return {Form::Value};
}

bool isZeroReal(double number) {
  return std::bit_cast<std::uint64_t>(number) == 0;
}

bool isZeroText(const char* text) {
  return *text == '\0';
}

/// Whether `input` has the value that a new input of its type has. Returns false for a buffer.
bool isZero(const Input& input) {
  switch (input.type()) {
    case AttrType::Bool:
      return !input.boolean();
    case AttrType::Int:
    case AttrType::UInt:
      return input.integer() == 0;
    case AttrType::Real:
      return isZeroReal(input.real());
    case AttrType::String:
      return isZeroText(input.string());
    case AttrType::Buffer:
      return false;  // planOfBuffer compares buffers
    default:
      return std::ranges::all_of(numbersOf(input), isZeroReal);
  }
}

Plan planOfValue(Input& input, const Start& start) {
  switch (input.type()) {
    case AttrType::Null:
      return {Form::Link};
    case AttrType::Node:
      return {Form::Reference};
    case AttrType::Array:
      return planOfArray(input, start);
    case AttrType::Object:
      return planOfObject(input, start);
    case AttrType::Buffer:
      return planOfBuffer(input.buffer(), start);
    case AttrType::Real:
      return planOfReal(input.real());
    case AttrType::Bool:
    case AttrType::Int:
    case AttrType::UInt:
    case AttrType::String:
      return {Form::Value};
    default:
      return planOfTuple(input);
  }
}

}  // namespace

Start Start::of(const zn::korvo_sdk::InputDeclaration& declaration) {
  Start start;
  start.exists = true;
  start.type = declaration.type;
  if (declaration.type == AttrType::Array) start.elementType = declaration.elementType;
  if (declaration.type == AttrType::Buffer) start.bufferType = declaration.bufferType;
  start.refusesValues = declaration.refusesValues;
  return start;
}

Plan planOf(Input& input, const Start& start) {
  if (start.exists && input.type() != start.type &&
      (start.type != AttrType::Null || !canBecome(input))) {
    return problem(reasons::DECLARED_TYPE);
  }
  const Plan plan = planOfValue(input, start);
  if (!start.refusesValues || plan.form != Form::Value) return plan;
  return isZero(input) ? LINK_ONLY : problem(reasons::REFUSED_VALUE);
}

}  // namespace vsa::impl
