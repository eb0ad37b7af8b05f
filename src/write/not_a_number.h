// The not-a-numbers of a scene. A text writes one as "nan" or "-nan", and the reader makes of it
// the quiet NaN of that sign whose other bits are zero. Internal.
#pragma once

#include <cstdint>

#include <vsa/scene/attr_data.h>

namespace vsa::impl {

/// Whether `value` is one of the two NaNs that a text can carry.
bool isPlainNan(double value);

/// Whether a number is a NaN that a text cannot carry. The buffer has the size that its type and
/// count say; its memory need not be aligned.
bool haveOtherNan(const double* numbers, std::uint64_t count);
bool haveOtherNan(const zn::korvo_sdk::BufferValue& buffer);

/// Whether all bits of the numbers are zero.
bool areZero(const double* numbers, std::uint64_t count);

}  // namespace vsa::impl
