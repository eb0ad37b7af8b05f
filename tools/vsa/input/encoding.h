// Which encoding a file seems to have, when it is not the one of the format.
#pragma once

#include <string_view>

namespace vsa_tools {

/// "UTF-16" or "UTF-32" when a file that begins with `head` looks like it: by its mark, or by where
/// the NUL bytes stand. Else null. A UTF-16 text whose first character is beyond Latin and that has
/// no mark is not recognised.
const char* foreignEncoding(std::string_view head);

}  // namespace vsa_tools
