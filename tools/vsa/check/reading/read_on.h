// Continues to read a text after a fatal mistake.
//
// The reader stops at a fatal mistake. readOn() replaces the wrong statement in a copy of the text,
// and reads the text after it into the same scene. These two steps are repeated up to the end of
// the text. They find the fatal mistakes in time that is proportional to the size of the text. Then
// the repaired text is read as a whole. That reading gives the other diagnostics, the links, and a
// scene that the rules can inspect.
#pragma once

#include <functional>
#include <string_view>

#include <vsa/read.h>

namespace vsa_tools {

/// A function that receives each diagnostic after the place where the reader stops. The positions
/// are those in the text. An exception that the function throws ends the reading.
using DiagnosticConsumer = std::function<void(const vsa::Diagnostic&)>;

/// Reads on in `text` after `stop`, the diagnostic that ended its reading. The limits and the
/// progress function are those of `options`. Returns the result of reading the repaired text.
/// Mistakes that only follow from an earlier one are omitted. Diagnostics before the stop are
/// reported again, but not `stop` itself.
vsa::ReadResult readOn(std::string_view text, const vsa::Diagnostic& stop,
                       const vsa::ReadOptions& options, const DiagnosticConsumer& consumer);

}  // namespace vsa_tools
