// The messages about values that do not fit their inputs. Internal.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>
#include "diagnostics/emitter.h"
#include "diagnostics/reading_sinks.h"

namespace zn::korvo_sdk::impl {

/// Throws the diagnostic CannotAssignType. If `isBuffer` is true, `typeName` is the name of a
/// DataType, and the message appends "[]" to the name.
[[noreturn]] inline void emitTypeError(const Emitter& emitter, const String& typeName,
                                       const interfaces::IInput& input, bool isBuffer) {
  emitter.fatal(DiagnosticId::CannotAssignType, typeName, isBuffer ? "[]" : "", input.typeName(),
                input.path());
}

/// Logs that the value is converted with a loss of information and assigned.
inline void emitNarrowing(const Emitter& emitter, const String& typeName,
                          const interfaces::IInput& input) {
  if (!isWanted(DiagnosticId::Narrowing)) return;
  emitter.log(DiagnosticId::Narrowing, typeName, input.typeName(), input.path());
}

/// Logs that a value is not assigned. `found` is the type of the value, or the value itself if the
/// input accepts no value.
inline void emitWrongType(const Emitter& emitter, const String& found,
                          const interfaces::IInput& input) {
  if (!isWanted(DiagnosticId::WrongType)) return;
  emitter.log(DiagnosticId::WrongType, input.typeName(), input.path(), found);
}

/// Logs that the assigned value is not in the input's enumeration.
inline void emitBadEnumValue(const Emitter& emitter, const String& value,
                             const interfaces::IInput& input) {
  if (!isWanted(DiagnosticId::BadEnumValue)) return;
  emitter.log(DiagnosticId::BadEnumValue, value, input.path());
}

}  // namespace zn::korvo_sdk::impl
