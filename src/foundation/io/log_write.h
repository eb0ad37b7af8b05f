// Writes messages to the log. The messages are already formatted. Internal.
#pragma once

#include <vsa/foundation/log.h>

namespace zn::detail {

/// Writes `text` to the sink of this thread. If this thread has no sink, writes to the sink of the
/// process. If the process has no sink either, writes to standard error.
void writeLog(LogLevel level, const String& text);

}  // namespace zn::detail
