// Detects files in UTF-16 and UTF-32, and compressed files.
#pragma once

#include <string_view>

namespace vsa_tools {

/// Returns "UTF-16" or "UTF-32" if a file that begins with `head` probably has that encoding,
/// otherwise null. The byte order mark or the places of NUL bytes show the encoding. UTF-32 without
/// a byte order mark is recognised only if `head` has at least eight bytes, and each group of four
/// bytes in it is a character from U+0001 to U+10FFFF. UTF-16 without a byte order mark is
/// recognised only if its first character is below U+0100, and if `head` has at least two NUL bytes
/// in the place of high bytes, and more of them than in the place of low bytes.
const char* foreignEncoding(std::string_view head);

/// Returns the name of the program that compressed a file which begins with `head`: "gzip", "zstd",
/// "xz" or "bzip2". Returns null if the file does not begin like one of theirs.
const char* compressorOf(std::string_view head);

}  // namespace vsa_tools
