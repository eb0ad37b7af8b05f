// The kernels of readNumberRun, one for each kind of processor. Internal. A kernel converts plain
// fields only; number_list.cpp calls it only for fields far enough from the end of the list, and
// converts all other fields by number_text.
#pragma once

#include <cstddef>
#include <type_traits>

#include "foundation/numbers/number_list.h"

#if defined(__x86_64__)
#define VSA_HAS_SSE41_KERNEL 1
#define VSA_HAS_AVX2_KERNEL 1
#else
#define VSA_HAS_SSE41_KERNEL 0
#define VSA_HAS_AVX2_KERNEL 0
#endif

namespace zn::numbers {

/// A kernel: converts consecutive plain fields from `at` on, each followed by a blank, as long as
/// they start at or before `limit` and `capacity` allows. `next` is the start of the first one not
/// converted. FIELD_WINDOW bytes (number_field.h) must be readable from the start of every field.
template <class Number>
using NumberKernel = NumberRun (*)(const char* at, const char* limit, Number* out, size_t capacity);

/// The kernel for every processor: eight digits per step in a 64-bit word.
template <class Number>
NumberRun readFieldsPortably(const char* at, const char* limit, Number* out, size_t capacity);

#if VSA_HAS_SSE41_KERNEL
/// The kernel for SSE4.1: sixteen characters per step. Requires cpuHasSse41().
template <class Number>
NumberRun readFieldsSse41(const char* at, const char* limit, Number* out, size_t capacity);
#endif

#if VSA_HAS_AVX2_KERNEL
/// The types with a kernel for AVX2. Long lists mostly have these types.
template <class Number>
inline constexpr bool HAS_AVX2_KERNEL = std::is_same_v<Number, float> ||
                                        (std::is_integral_v<Number> && sizeof(Number) == 4);

/// The kernel for AVX2: four fields per step. Requires cpuHasAvx2().
template <class Number>
NumberRun readFieldsAvx2(const char* at, const char* limit, Number* out, size_t capacity);
#endif

/// readNumberRun with a given kernel.
template <class Number>
NumberRun readNumberRunWith(NumberKernel<Number> kernel, const char* from, const char* end,
                            Number* out, size_t capacity);

}  // namespace zn::numbers
