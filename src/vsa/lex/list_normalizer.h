// The fast road through a list: runs of numbers with separators between them, copied in their
// normal form. Internal; the door is vsa.h.
#pragma once

#include <cstddef>

#if defined(__x86_64__)
#define VSA_LIST_RUN_HAS_VECTORS 1
#else
#define VSA_LIST_RUN_HAS_VECTORS 0
#endif

namespace zn::korvo_sdk::impl {

/// How far a run was copied.
struct ListRun {
  const char* from;  ///< Behind the last byte read.
  char* to;          ///< Behind the last byte written.
};

/// More than the source's bytes are never written, but up to this many are scribbled over.
inline constexpr std::size_t LIST_RUN_SLACK = 16;

/// Copies number characters from [from, end) to `to`, every stretch of blanks, line ends and commas
/// between two of them as a single blank. Stops before the first other byte, and before a stretch
/// that no number character is known to follow: it always ends behind a number character. The byte
/// at `from` must be a number character. `to` has room for end - from + LIST_RUN_SLACK bytes.
ListRun copyListRun(const char* from, const char* end, char* to);

/// What copyListRun chooses from, by the processor. All give the same; this one runs everywhere.
ListRun copyListRunPortable(const char* from, const char* end, char* to);
#if VSA_LIST_RUN_HAS_VECTORS
/// Only where cpuHasSse42() is true.
ListRun copyListRunSse42(const char* from, const char* end, char* to);
/// Only where cpuHasAvx2() is true.
ListRun copyListRunAvx2(const char* from, const char* end, char* to);
#endif

}  // namespace zn::korvo_sdk::impl
