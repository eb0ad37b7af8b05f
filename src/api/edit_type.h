// Functions that check which values and types an input can have, and prepare an input for a type.
// Internal.
#pragma once

#include <vsa/edit_status.h>
#include <vsa/model/input.h>
#include <vsa/values/value.h>
#include <vsa/values/value_types.h>

namespace vsa::detail {

/// Returns None, or the reason why no text can represent the value.
Status checkValue(const Value& value) noexcept;

/// Checks whether the input can have a value of this type. Returns None, OtherElementType,
/// DeclaredType or TakesNoValue. The type Null means no value.
Status checkTakes(const zn::korvo_sdk::Input& input, ValueType type) noexcept;

/// Checks whether the input can have a buffer whose elements have this type. Returns one of the
/// results of checkTakes.
Status checkTakesBuffer(const zn::korvo_sdk::Input& input, ElementType type) noexcept;

/// Whether the type of the node declares the input with the type Null. A text makes such an input
/// an object by adding a member. No text makes it an object without members.
bool isDeclaredNull(const zn::korvo_sdk::Input& input) noexcept;

/// Prepares the input for a value of type `type`: removes the current value if it has another type.
/// The type of the input is then Null. Call this function after `checkTakes` has returned None for
/// `type`.
void makeReadyFor(zn::korvo_sdk::Input& input, ValueType type) noexcept;

}  // namespace vsa::detail
