// Detection of files in another encoding than UTF-8.
#pragma once

#include <string_view>

namespace vsa_tools {

/// The name of the encoding, "UTF-16" or "UTF-32", of a file that begins with `head`, judged by its
/// byte order mark or by the places of its NUL bytes; null for other files. Does not recognise
/// UTF-16 without a byte order mark whose first character is not Latin.
const char* foreignEncoding(std::string_view head);

}  // namespace vsa_tools
