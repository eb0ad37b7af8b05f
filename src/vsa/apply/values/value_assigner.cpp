#include "vsa/apply/values/value_assigner.h"

#include "vsa/apply/type_messages.h"
#include "vsa/apply/values/string_literal.h"
#include "vsa/apply/values/value_convert.h"

namespace zn::korvo_sdk::impl {

using interfaces::IInput;

bool ValueAssigner::assign(AttrData& value, std::string_view literal, IInput& input, IInput* array,
                           std::uint64_t countBefore) {
  if (!accepts(value, literal, input)) {
    if (session_ != nullptr) session_->dropValue();
    return false;
  }
  if (array != nullptr) {
    typedElements_.setEmptyElements(*array, countBefore, value.elementType);
  }
  if (session_ != nullptr) session_->transferValue(input, value);
  input.assign(value);
  if (value.type == AttrType::String) checkEnumeration(literal, input);
  return true;
}

// Returns whether the value may be assigned. If true, converts it to the type of the input. If
// false, logs the reason.
bool ValueAssigner::accepts(AttrData& value, std::string_view literal, const IInput& input) const {
  if (input.isArray(false) || input.refusesValues()) {
    emitWrongType(emitter_, quotedValue(literal, value.type == AttrType::Buffer), input);
    return false;
  }
  if (input.holdsBuffer(false)) return acceptsBuffer(value, input);
  const AttrType from = value.type;
  const AttrType to = input.type();
  if (from == to) return true;
  const Conversion conversion = conversionBetween(from, to);
  if (conversion == Conversion::Refused) {
    emitWrongType(emitter_, attrTypeName(from), input);
    return false;
  }
  if (conversion == Conversion::Narrowing) emitNarrowing(emitter_, attrTypeName(from), input);
  convert(value, to);
  return true;
}

bool ValueAssigner::acceptsBuffer(const AttrData& value, const IInput& input) const {
  if (value.type != AttrType::Buffer) {
    emitWrongType(emitter_, attrTypeName(value.type), input);
    return false;
  }
  const DataType type = value.payload.buffer.type;
  const DataType present = input.bufferType();
  if (present == DataType::Null || present == type) return true;
  emitWrongType(emitter_, dataTypeName(type), input);
  return false;
}

// Logs a string that is not in the enumeration of the input. Called after the assignment, because
// the assignment may add the string to the enumeration. The value is read from the token again,
// because the input now owns the characters.
void ValueAssigner::checkEnumeration(std::string_view literal, const IInput& input) const {
  const interfaces::IEnumeration* const values = input.enumValues();
  if (values == nullptr || values->isEmpty()) return;
  const String value = stringValue(literal);
  if (values->find(value) == nullptr) emitBadEnumValue(emitter_, value, input);
}

}  // namespace zn::korvo_sdk::impl
