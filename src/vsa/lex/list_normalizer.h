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

/// The ends of the bytes that were read and written.
struct NormalizedList {
  const char* from;  ///< One past the last byte read.
  char* to;          ///< One past the last byte written.
};

/// The output is never longer than the input, but up to this many bytes after it are overwritten.
inline constexpr std::size_t NORMALIZER_SLACK = 16;

/// Copies number characters from [from, end) to `to`, and replaces each run of blanks, line ends
/// and commas between two of them by a single blank. Stops before the first other byte, and before
/// a run of separators that no number character follows, so it always stops after a number
/// character. The byte at `from` must be a number character. `to` must have a capacity of end -
/// from + NORMALIZER_SLACK.
NormalizedList normalizeList(const char* from, const char* end, char* to);

/// normalizeList selects one of these kernels by processor. All give the same result. This one runs
/// on every processor.
NormalizedList normalizeListPortable(const char* from, const char* end, char* to);
#if VSA_LIST_NORMALIZER_HAS_VECTORS
/// Requires cpuHasSse42().
NormalizedList normalizeListSse42(const char* from, const char* end, char* to);
/// Requires cpuHasAvx2().
NormalizedList normalizeListAvx2(const char* from, const char* end, char* to);
#endif

}  // namespace zn::korvo_sdk::impl
