// Counts how often the reader raises each message. If a message is never raised, the fuzzers do not
// reach the code that raises it.
#pragma once

#include <vsa/diagnostics/diagnostic.h>

namespace vsa_fuzz {

/// Counts a message. At the exit of the process, one line "COUNT NAME" per message is appended to a
/// file. The environment variable VSA_FUZZ_MESSAGES contains the name of the file. Without it, or
/// if no message was counted, nothing is written.
void countMessage(zn::korvo_sdk::DiagnosticId id);

}  // namespace vsa_fuzz
