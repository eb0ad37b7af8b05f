// Continuing to read after a fatal mistake.
//
// The reader stops at a fatal mistake. Here the wrong statement is replaced in a copy of the text,
// and the rest is read into the same scene, and so on up to the end: this finds the fatal mistakes
// in time that is proportional to the text. Then the repaired text is read as a whole, for the
// other diagnostics, the links and a scene that the rules can inspect.
#pragma once

#include <functional>
#include <string_view>

#include <vsa/read.h>

namespace vsa_tools {

/// Called with each diagnostic after the one at which the reader stops. The positions of the
/// diagnostic are those in the text. An exception that the consumer throws ends the reading.
using DiagnosticConsumer = std::function<void(const vsa::Diagnostic&)>;

/// Reads on in `text` after `stop`, the diagnostic that ended its reading, with the limits and the
/// progress function of `options`. Returns the reading of the repaired text. Mistakes that only
/// follow from an earlier one are left out. Diagnostics before the stop are reported again, except
/// `stop` itself.
vsa::ReadResult readOn(std::string_view text, const vsa::Diagnostic& stop,
                       const vsa::ReadOptions& options, const DiagnosticConsumer& consumer);

}  // namespace vsa_tools
