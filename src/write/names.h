// Which names a text can carry. Internal.
#pragma once

#include <string_view>

namespace vsa::impl {

/// Whether the lexer reads `name` as one identifier: a letter or "_", then letters, digits and "_",
/// and neither `true`, `false` nor `null` in any letter case. Bytes from 0x80 to 0xFE are letters.
bool isName(std::string_view name);

/// Whether a connection can name an output so: an identifier, and then any number of bracket lists,
/// which the reader takes for a part of the name.
bool isOutputName(std::string_view name);

/// Whether "type name;" is no declaration but the statement `remove` or `define`.
bool isStatementWord(std::string_view type);

}  // namespace vsa::impl
