// Unescapes a part of a text, so that the caller can poll the host between the parts of a long
// text. Internal.
#pragma once

namespace zn {

/// Unescapes the text [at, end) up to `stop`. If an escape sequence crosses `stop`, continues to
/// the end of the sequence. Advances `at` to the first character that was not read. Writes the
/// output to `to` and returns its end. The output is never longer than the characters read. But the
/// function may overwrite more bytes: `to` must have room for `end - at` characters and must not
/// overlap the text.
char* unescapePiece(const char*& at, const char* stop, const char* end, char* to) noexcept;

}  // namespace zn
