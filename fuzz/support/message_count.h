// Counts how often the reader raises each message. If a message is never raised, the fuzzers do not
// reach the code that raises it.
#pragma once

#include <vsa/diagnostics/diagnostic.h>

namespace vsa_fuzz {

/// Counts one message with this id. At the exit of the process, one line "COUNT NAME" for each id,
/// even with count 0, is appended to the file that the environment variable VSA_FUZZ_MESSAGES
/// names. HostError and TooManyArrayElements have no line, because the fuzzers cannot cause them.
/// Without the variable, or if this function was never called, nothing is written.
void countMessage(zn::korvo_sdk::DiagnosticId id);

}  // namespace vsa_fuzz
