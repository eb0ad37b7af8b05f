// typedPrefixOf: the number of leading elements of an array that need no type. Internal.
//
// The reader sets the type of the untyped elements of arrays of buffers and arrays of arrays. At
// the first statement of a text that fills an array, it does not know which elements of earlier
// texts have a type. The library's own scene stores how many have one. That scene registers a
// function here, which recognises its arrays.
#pragma once

#include <cstdint>

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

/// The number of leading elements of `array` that IInput::set leaves unchanged, whatever type is
/// passed.
using TypedPrefixOf = std::uint64_t (*)(interfaces::IInput& array) noexcept;

/// Sets the function that `typedPrefixOf` calls. All scenes of the library set the same function.
void setTypedPrefix(TypedPrefixOf function) noexcept;
/// Returns 0 if the scene does not store this number.
std::uint64_t typedPrefixOf(interfaces::IInput& array) noexcept;

}  // namespace zn::korvo_sdk
