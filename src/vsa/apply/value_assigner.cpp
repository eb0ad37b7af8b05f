#include "vsa/apply/value_assigner.h"

#include "vsa/apply/string_literal.h"
#include "vsa/apply/type_messages.h"
#include "vsa/apply/value_convert.h"

namespace zn::korvo_sdk::impl {

using interfaces::IInput;

void ValueAssigner::assign(AssignInfo& info, const PathResolver& target) {
  IInput& input = *target.input();
  IInput* const array = target.array();
  if (!accepts(info, input)) return;
  if (array != nullptr) {
    typedElements_.setEmptyElements(*array, target.arrayCountBefore(), info.data.elementType);
  }
  if (session_ != nullptr) session_->handOver(input, info);
  input.assign(info.data);
  if (info.data.type == AttrType::String) checkEnumeration(info, input);
}

// Returns whether the value may be assigned. If so, converts it to the input's type. If not, logs
// the reason.
bool ValueAssigner::accepts(AssignInfo& info, const IInput& input) const {
  if (input.isArray(false) || input.refusesValues()) {
    emitWrongType(emitter_, info.valueString(), input);
    return false;
  }
  if (input.holdsBuffer(false)) return acceptsBuffer(info, input);
  const AttrType from = info.data.type;
  const AttrType to = input.type();
  if (from == to) return true;
  const Conversion conversion = conversionBetween(from, to);
  if (conversion == Conversion::Refused) {
    emitWrongType(emitter_, attrTypeName(from), input);
    return false;
  }
  if (conversion == Conversion::Narrowing) emitNarrowing(emitter_, attrTypeName(from), input);
  convert(info.data, to);
  return true;
}

bool ValueAssigner::acceptsBuffer(const AssignInfo& info, const IInput& input) const {
  if (info.data.type != AttrType::Buffer) {
    emitWrongType(emitter_, attrTypeName(info.data.type), input);
    return false;
  }
  const DataType type = info.data.payload.buffer.type;
  const DataType present = input.bufferType();
  if (present == DataType::Null || present == type) return true;
  emitWrongType(emitter_, dataTypeName(type), input);
  return false;
}

// Checked after the assignment, which may have added the value. assign() took ownership of the
// characters, so this reads them from the token again.
void ValueAssigner::checkEnumeration(const AssignInfo& info, const IInput& input) const {
  const interfaces::IEnumeration* const values = input.enumValues();
  if (values == nullptr || values->isEmpty()) return;
  const String value = stringValue(info.valueToken);
  if (values->find(value) == nullptr) emitBadEnumValue(emitter_, value, input);
}

}  // namespace zn::korvo_sdk::impl
