// Finds NaNs that a text cannot represent. Internal.
//
// The reader converts "nan" and "-nan" to the quiet NaN of that sign with payload 0. A text cannot
// represent any other NaN.
#pragma once

#include <cstddef>
#include <span>

#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

/// Whether the number is a NaN that a text cannot represent.
bool isOtherNan(double number) noexcept;

/// Whether one of the numbers is a NaN that a text cannot represent.
bool haveOtherNan(std::span<const double> numbers) noexcept;

/// Whether a buffer contains a NaN that a text cannot represent. `bytes` are the elements of the
/// buffer and need not be aligned. Returns false if the components of the elements are not floats
/// or doubles.
bool haveOtherNan(DataType elements, std::span<const std::byte> bytes) noexcept;

}  // namespace zn::korvo_sdk
