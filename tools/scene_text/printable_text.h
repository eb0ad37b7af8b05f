// Text of strangers made fit to look at. A scene file chooses its names, strings and comments
// freely, and they come back in messages and dumps: nothing of them may steer a terminal, break a
// line of a log or leave UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vsa_tools {

/// Length in bytes, 1 to 4, of the well-formed UTF-8 sequence that `text` begins with, or 0 when
/// its first byte begins none (a stray or cut-off sequence, an overlong form, a surrogate, beyond
/// U+10FFFF). `text` must not be empty.
size_t utf8SequenceLength(std::string_view text);

/// The character that a well-formed sequence stands for; `sequence` is exactly what
/// utf8SequenceLength measured.
char32_t utf8Character(std::string_view sequence);

/// Whether a character acts instead of being seen: control characters (C0, DEL, C1), the line and
/// paragraph separators, and the marks that turn the direction of writing.
bool actsOnTerminal(char32_t character);

/// `text` with every acting character and every byte that is no UTF-8 spelled out: \n, \r, \t, \xHH
/// for a byte and \uHHHH for a character beyond ASCII. All else, backslashes included, stays as it
/// is.
std::string visible(std::string_view text);

}  // namespace vsa_tools
