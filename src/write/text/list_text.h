// Lists of numbers as text, broken into lines. Internal.
#pragma once

#include <cstdint>

#include <vsa/scene/attr_data.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// Writes the components of `count` doubles, a blank between two.
void putTuple(TextBuffer& out, const double* components, unsigned count);

/// Writes "{" and the numbers of a buffer, which has the size that its type and count say, in the
/// layout of `options`. `column` is how many characters the line has already. The memory need not
/// be aligned.
void putNumbers(TextBuffer& out, const zn::korvo_sdk::BufferValue& buffer,
                const WriteOptions& options, std::uint64_t column);

}  // namespace vsa::impl
