// String::unescape in pieces, for texts that take long. Internal.
#pragma once

namespace zn {

/// Unescapes the text [at, end), up to `stop`, or to the end of an escape sequence that crosses
/// `stop`. Advances `at` past the characters read. Writes the output to `to` and returns its end.
/// The output is no longer than the characters read.
char* unescapePiece(const char*& at, const char* stop, const char* end, char* to) noexcept;

}  // namespace zn
