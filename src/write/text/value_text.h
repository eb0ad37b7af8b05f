// The values of a scene as literals. Internal.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/model/input.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// Writes the literal of a value of any type except Null, Node, Array and Object, which have none.
/// `column` is the number of characters that the line has already.
void putLiteral(TextBuffer& out, const zn::korvo_sdk::Input& input, const WriteOptions& options,
                std::uint64_t column);

/// Writes `text` in quotation marks. Control characters and the byte 0xFF become escape sequences.
void putString(TextBuffer& out, std::string_view text);

}  // namespace vsa::impl
