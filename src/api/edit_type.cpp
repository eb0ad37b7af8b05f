#include "api/edit_type.h"

#include <vsa/model/node.h>
#include <vsa/text_rules.h>
#include "scene/model/node_impl.h"
#include "scene/node_type_table.h"

namespace vsa::detail {

namespace {

using PlainInput = zn::korvo_sdk::Input;

bool isDeclaredInput(const PlainInput& input) noexcept {
  return input.parent() == nullptr && input.owner()->isDeclared();
}

// Checks whether an element of `array` can have the type `type`. All elements have the element type
// of the array. If the element type is Null, the elements can only have links.
Status checkElement(const PlainInput& array, ValueType type) noexcept {
  const ValueType elements = array.elementType();
  if (elements != ValueType::Null)
    return type == elements ? EditError::None : EditError::OtherElementType;
  return type == ValueType::Null || type == ValueType::Node ? EditError::None
                                                            : EditError::OtherElementType;
}

// Checks whether a declared input can have the type `type`. A declared input of type Null accepts
// links and members, but no value.
Status checkDeclared(const PlainInput& input, ValueType type) noexcept {
  const bool isLink = type == ValueType::Node;
  if (!isLink && input.refusesValues()) return EditError::TakesNoValue;
  if (type == input.type()) return {};
  const bool becomes = isLink || type == ValueType::Object;
  return input.type() == ValueType::Null && becomes ? EditError::None : EditError::DeclaredType;
}

}  // namespace

Status checkValue(const Value& value) noexcept {
  if (value.type() == ValueType::Real) return checkReal(value.real());
  if (value.type() == ValueType::String) return checkString(value.text());
  return value.tuple() != nullptr ? checkNumbers(value.tuple()->components()) : Status();
}

Status checkTakes(const PlainInput& input, ValueType type) noexcept {
  const PlainInput* const parent = input.parent();
  if (parent != nullptr && parent->type() == ValueType::Array) return checkElement(*parent, type);
  return isDeclaredInput(input) ? checkDeclared(input, type) : Status();
}

Status checkTakesBuffer(const PlainInput& input, ElementType type) noexcept {
  if (const Status status = checkTakes(input, ValueType::Buffer); !status) return status;
  if (!isDeclaredInput(input)) return {};
  const ElementType held = input.bufferType();
  return held == ElementType::Null || held == type ? EditError::None : EditError::DeclaredType;
}

bool isDeclaredNull(const PlainInput& input) noexcept {
  if (!isDeclaredInput(input)) return false;
  const auto& node = static_cast<const zn::korvo_sdk::NodeImpl&>(*input.owner());
  const zn::korvo_sdk::DeclaredInput* const declared =
      node.declaration()->input(input.name().view());
  return declared != nullptr && declared->declaration.type == ValueType::Null;
}

void makeReadyFor(PlainInput& input, ValueType type) noexcept {
  if (input.type() != type) input.clearValue();
}

}  // namespace vsa::detail
