// Internal: the forms behind readNumberRun, one for each kind of processor. A form knows the usual
// pieces only; number_list.cpp brings it to them, keeps it away from the end of the list and takes
// everything else through number_text.

#pragma once

#include <cstddef>
#include <type_traits>

#include "foundation/numbers/number_list.h"

#if defined(__x86_64__)
#define VSA_HAS_SSE41_FORM 1
#define VSA_HAS_AVX2_FORM 1
#else
#define VSA_HAS_SSE41_FORM 0
#define VSA_HAS_AVX2_FORM 0
#endif

namespace zn::numbers {

/// A form: converts the usual pieces in a row from `at` on, each followed by a blank, while they
/// start at or before `limit` and `room` is left. `next` is the start of the first one not
/// converted. FORM_WINDOW bytes (number_piece.h) may be read from the start of any piece.
template <class Number>
using NumberForm = NumberRun (*)(const char* at, const char* limit, Number* out, size_t room);

/// The form for every processor: eight digits a step in a 64-bit word.
template <class Number>
NumberRun readPiecesPortably(const char* at, const char* limit, Number* out, size_t room);

#if VSA_HAS_SSE41_FORM
/// The form for SSE4.1: sixteen characters a step. Only where cpuHasSse41() is true.
template <class Number>
NumberRun readPiecesSse41(const char* at, const char* limit, Number* out, size_t room);
#endif

#if VSA_HAS_AVX2_FORM
/// The types that have a form for AVX2: those that lists are long of.
template <class Number>
inline constexpr bool HAS_AVX2_FORM = std::is_same_v<Number, float> ||
                                      (std::is_integral_v<Number> && sizeof(Number) == 4);

/// The form for AVX2: two pieces a step. Only where cpuHasAvx2() is true.
template <class Number>
NumberRun readPiecesAvx2(const char* at, const char* limit, Number* out, size_t room);
#endif

/// readNumberRun with the form given.
template <class Number>
NumberRun readNumberRunWith(NumberForm<Number> form, const char* from, const char* end, Number* out,
                            size_t room);

}  // namespace zn::numbers
