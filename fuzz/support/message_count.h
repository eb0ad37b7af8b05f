// Counts how often the reader raises each message. If a message is never raised, the fuzzers do not
// reach some code.
#pragma once

#include <vsa/diagnostics/diagnostic.h>

namespace vsa_fuzz {

/// Counts a message. At process exit, one line "COUNT NAME" for each message is appended to the
/// file that the environment variable VSA_FUZZ_MESSAGES names.
void countMessage(zn::korvo_sdk::DiagnosticId id);

}  // namespace vsa_fuzz
