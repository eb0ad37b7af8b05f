// Lists of numbers as text, broken into lines. Internal.
#pragma once

#include <cstdint>

#include <vsa/scene/attr_data.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// Writes `count` doubles, separated by blanks.
void putTuple(TextBuffer& out, const double* components, unsigned count);

/// Writes "{" and the numbers of a buffer, in the layout of `options`. The buffer's memory has
/// `count` elements of its type and need not be aligned. `column` is the number of characters that
/// the line has already.
void putNumbers(TextBuffer& out, const zn::korvo_sdk::BufferValue& buffer,
                const WriteOptions& options, std::uint64_t column);

}  // namespace vsa::impl
