// Writes the values of a scene as literals. Internal.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/model/input.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// Writes a value as a literal. Its type must not be Null, Node, Array or Object, because these
/// types have no literals. `column` is the number of characters that are already in the line.
void putLiteral(TextBuffer& out, const zn::korvo_sdk::Input& input, const WriteOptions& options,
                std::uint64_t column);

/// Writes `text` as a string in quotation marks. Quotation marks, backslashes, control characters
/// (with DEL) and the byte 0xFF become escape sequences.
void putString(TextBuffer& out, std::string_view text);

}  // namespace vsa::impl
