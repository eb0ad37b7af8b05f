// How often each message of the reader came up: a fuzzer that never sees a message does not reach
// the place that raises it.
#pragma once

#include <vsa/diagnostics/diagnostic.h>

namespace vsa_fuzz {

/// Counts a message. The counts are appended, a line "COUNT NAME" each, to the file that the
/// environment variable VSA_FUZZ_MESSAGES names, when the process exits.
void countMessage(zn::korvo_sdk::DiagnosticId id);

}  // namespace vsa_fuzz
