// Writes lists of numbers and breaks them into lines. Internal.
#pragma once

#include <cstdint>

#include <vsa/scene/attr_data.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// Writes `count` doubles with a blank between them.
void putTuple(TextBuffer& out, const double* components, unsigned count);

/// Writes "{" and the numbers of a buffer. The caller writes the "}". `options` contains the
/// layout. The memory of the buffer has `count` elements of its type, and may have any alignment.
/// `column` is the number of characters that are already in the line.
void putNumbers(TextBuffer& out, const zn::korvo_sdk::BufferValue& buffer,
                const WriteOptions& options, std::uint64_t column);

}  // namespace vsa::impl
