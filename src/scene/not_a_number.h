// Checks for NaNs that a text cannot represent. The reader converts "nan" and "-nan" to the quiet
// NaN of that sign with payload 0, so a text has no other NaN. Internal.
#pragma once

#include <cstddef>
#include <span>

#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

/// Whether the number is a NaN that a text cannot represent.
bool isOtherNan(double number) noexcept;

/// Whether one of the numbers is such a NaN.
bool haveOtherNan(std::span<const double> numbers) noexcept;

/// Whether a buffer with these bytes contains such a NaN. The bytes need not be aligned. Returns
/// false for elements of integers.
bool haveOtherNan(DataType elements, std::span<const std::byte> bytes) noexcept;

}  // namespace zn::korvo_sdk
