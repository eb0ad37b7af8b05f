// The values of a scene as literals. Internal.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/model/input.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// Writes the literal of a value, which has one: everything but Null, Node, Array and Object.
/// `column` is how many characters the line has already.
void putLiteral(TextBuffer& out, const zn::korvo_sdk::Input& input, const WriteOptions& options,
                std::uint64_t column);

/// Writes `text` in quotation marks. Control characters and the byte 0xFF become escape sequences.
void putString(TextBuffer& out, std::string_view text);

}  // namespace vsa::impl
