// The list normaliser: copies numbers and the separators between them in normal form, with single
// blanks between the numbers. Internal.
#pragma once

#include <cstddef>

#if defined(__x86_64__)
#define VSA_LIST_NORMALIZER_HAS_VECTORS 1
#else
#define VSA_LIST_NORMALIZER_HAS_VECTORS 0
#endif

namespace zn::korvo_sdk::impl {

/// How far a list was copied.
struct NormalizedList {
  const char* from;  ///< Behind the last byte read.
  char* to;          ///< Behind the last byte written.
};

/// The output is never longer than the input, but up to this many bytes behind it are overwritten.
inline constexpr std::size_t NORMALIZER_SLACK = 16;

/// Copies number characters from [from, end) to `to`, and each run of blanks, line ends and commas
/// between two of them as a single blank. Stops before the first other byte, and before a run of
/// separators without a number character behind it, so it always ends behind a number character.
/// The byte at `from` must be a number character. `to` has a capacity of end - from +
/// NORMALIZER_SLACK.
NormalizedList normalizeList(const char* from, const char* end, char* to);

/// The kernels that normalizeList selects from by processor. All give the same result; this one
/// runs everywhere.
NormalizedList normalizeListPortable(const char* from, const char* end, char* to);
#if VSA_LIST_NORMALIZER_HAS_VECTORS
/// Only where cpuHasSse42() is true.
NormalizedList normalizeListSse42(const char* from, const char* end, char* to);
/// Only where cpuHasAvx2() is true.
NormalizedList normalizeListAvx2(const char* from, const char* end, char* to);
#endif

}  // namespace zn::korvo_sdk::impl
