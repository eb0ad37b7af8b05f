// String::unescape in pieces, for texts that take long. Internal.
#pragma once

namespace zn {

/// Unescapes the text up to `end` from `at` on, up to `stop` or to the end of the escape sequence
/// that goes beyond it. Moves `at` behind what was read and returns the end of the output, which
/// begins at `to` and is no longer than what was read.
char* unescapePiece(const char*& at, const char* stop, const char* end, char* to) noexcept;

}  // namespace zn
