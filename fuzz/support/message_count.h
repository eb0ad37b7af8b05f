// How often each message of the reader came up: a fuzzer that never sees a message does not reach
// the place that raises it.
#pragma once

#include <string_view>

namespace vsa_fuzz {

/// Counts the message that `text` is, and the messages that it quotes. Text that is none counts for
/// nothing. The counts are appended, a line "COUNT NAME" each, to the file that the environment
/// variable VSA_FUZZ_MESSAGES names, when the process exits.
void countMessage(std::string_view text);

}  // namespace vsa_fuzz
