// typedPrefixOf: returns how many leading elements of an array already have a type. Internal.
//
// The reader sets the type of the untyped elements of arrays of buffers and arrays of arrays. An
// array may contain elements of earlier texts, and the reader does not know which of these have a
// type. The library's own scene stores for each array how many of its leading elements have a type.
// The scene therefore registers a function, which returns this number.
#pragma once

#include <cstdint>

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

/// The type of a function that returns the number of typed elements at the start of `array`. The
/// reader need not set the type of a typed element: it is not Null, and if it has the element type
/// of `array`, it is not a buffer or an array without an element type of its own.
using TypedPrefixOf = std::uint64_t (*)(interfaces::IInput& array) noexcept;

/// Sets the function that `typedPrefixOf` calls. Every scene of the library sets the same function.
void setTypedPrefix(TypedPrefixOf function) noexcept;
/// Returns the result of that function. Returns 0 if `array` is an input of a host's scene.
std::uint64_t typedPrefixOf(interfaces::IInput& array) noexcept;

}  // namespace zn::korvo_sdk
