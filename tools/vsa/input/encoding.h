// Detects files in another encoding than UTF-8.
#pragma once

#include <string_view>

namespace vsa_tools {

/// Returns "UTF-16" or "UTF-32" if a file that begins with `head` has that encoding, otherwise
/// null. The byte order mark or the places of NUL bytes show the encoding. UTF-16 without a byte
/// order mark is recognised only if its first character is below U+0100, and if `head` has at least
/// two NUL bytes in the place of high bytes, and more of them than in the place of low bytes.
const char* foreignEncoding(std::string_view head);

}  // namespace vsa_tools
