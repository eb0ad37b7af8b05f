// The fast road through a list: runs of numbers with separators between them, copied in their
// normal form. Internal; the door is vsa.h.
#pragma once

#include <cstddef>

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

/// The same, one byte a step: what copyListRun does on processors without byte shuffles.
ListRun copyListRunPortable(const char* from, const char* end, char* to);

}  // namespace zn::korvo_sdk::impl
