// Checks which types of values an input can have. Internal.
#pragma once

#include <vsa/edit_status.h>
#include <vsa/model/input.h>
#include <vsa/values/value.h>
#include <vsa/values/value_types.h>

namespace vsa::detail {

/// Returns None, or why no text can represent the value.
Status checkValue(const Value& value) noexcept;

/// Checks whether the input can have a value of the type. Returns None, OtherElementType,
/// DeclaredType or TakesNoValue. For the type Null, checks whether the input can be without a
/// value.
Status checkTakes(const zn::korvo_sdk::Input& input, ValueType type) noexcept;

/// Checks the same for a buffer with elements of the given type.
Status checkTakesBuffer(const zn::korvo_sdk::Input& input, ElementType type) noexcept;

/// Removes a value of another type, so that the input has that type or Null. Call it after
/// `checkTakes` has allowed the type.
void makeReadyFor(zn::korvo_sdk::Input& input, ValueType type) noexcept;

}  // namespace vsa::detail
