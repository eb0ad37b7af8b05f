// Which names a text can carry, beside vsa::isName. Internal.
#pragma once

#include <string_view>

namespace vsa::impl {

/// Whether a connection can name an output so: an identifier, and then any number of bracket lists,
/// which the reader takes for a part of the name.
bool isOutputName(std::string_view name);

/// Whether "type name;" is no declaration but the statement `remove` or `define`.
bool isStatementWord(std::string_view type);

}  // namespace vsa::impl
