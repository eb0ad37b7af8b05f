// The kernels of readNumberRun: one implementation for each kind of processor. Internal.
//
// A kernel converts only plain fields (see number_field.h). number_text converts the fields that
// the kernel does not convert. A kernel may read up to FIELD_WINDOW bytes from the start of a
// field. After the last fields of a list, fewer bytes may be readable. number_list.cpp therefore
// passes these fields in a copy, which is followed by blanks.
#pragma once

#include <cstddef>
#include <type_traits>

#include "foundation/numbers/number_list.h"

namespace zn::numbers {

/// The type of a kernel. A kernel converts consecutive plain fields from `at` on. A blank must
/// follow each field. The kernel stops at a field that starts after `limit`, at a field that it
/// cannot convert, and when `capacity` values are stored. It cannot convert a field that is not
/// plain or is out of range, nor some other fields, for example with many digits. `next` is the
/// start of the first field that was not converted. FIELD_WINDOW bytes (number_field.h) must be
/// readable from the start of every field up to `limit`.
template <class Number>
using NumberKernel = NumberRun (*)(const char* at, const char* limit, Number* out, size_t capacity);

/// The kernel for all processors. It converts up to eight digits per step in a 64-bit word.
template <class Number>
NumberRun readFieldsPortably(const char* at, const char* limit, Number* out, size_t capacity);

#if defined(__x86_64__)
/// The kernel for SSE4.1. It converts sixteen characters per step. Requires cpuHasSse41().
template <class Number>
NumberRun readFieldsSse41(const char* at, const char* limit, Number* out, size_t capacity);

/// The types with an AVX2 kernel. Most long lists have one of these types.
template <class Number>
inline constexpr bool HAS_AVX2_KERNEL = std::is_same_v<Number, float> ||
                                        (std::is_integral_v<Number> && sizeof(Number) == 4);

/// The kernel for AVX2. It converts four fields per step. Requires cpuHasAvx2().
template <class Number>
NumberRun readFieldsAvx2(const char* at, const char* limit, Number* out, size_t capacity);
#endif

/// Like readNumberRun, but with the kernel that the caller passes.
template <class Number>
NumberRun readNumberRunWith(NumberKernel<Number> kernel, const char* from, const char* end,
                            Number* out, size_t capacity);

}  // namespace zn::numbers
