// The list normaliser: copies a list of numbers in normal form, with single blanks between the
// numbers. Internal.
#pragma once

#include <cstddef>

namespace zn::korvo_sdk::impl {

/// The positions where the normaliser stopped.
struct NormalizedList {
  const char* from;  ///< One past the last number character that was copied.
  char* to;          ///< One past the last byte written.
};

/// The maximum number of bytes after the output that are overwritten. Some implementations of
/// normalizeList() store eight or more bytes at once, even if the rest of the output is shorter.
inline constexpr std::size_t NORMALIZER_SLACK = 16;

/// Copies number characters from [from, end) to `to`. Replaces each run of separators between two
/// number characters by one blank. A separator is a comma or white space: a blank, \t, \n, \v, \f
/// or \r. Stops before the first byte that is neither a number character nor a separator. Also
/// stops before a run of separators that no number character follows. The last byte copied is
/// therefore always a number character.
///
/// The byte at `from` must be a number character. The output is never longer than the input. `to`
/// must have a capacity of end - from + NORMALIZER_SLACK bytes.
NormalizedList normalizeList(const char* from, const char* end, char* to);

// The kernels. normalizeList() calls one of them, depending on the processor. All kernels give the
// same result.

/// Runs on every processor.
NormalizedList normalizeListPortable(const char* from, const char* end, char* to);
#if defined(__x86_64__)
/// Requires cpuHasSse42().
NormalizedList normalizeListSse42(const char* from, const char* end, char* to);
/// Requires cpuHasAvx2().
NormalizedList normalizeListAvx2(const char* from, const char* end, char* to);
#endif

}  // namespace zn::korvo_sdk::impl
