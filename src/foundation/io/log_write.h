// Writes messages to the log. The messages are already formatted. Internal.
#pragma once

#include <vsa/foundation/log.h>

namespace zn::detail {

/// Writes `text` to the sink of this thread. Without such a sink, writes to the sink of the
/// process. Without both sinks, writes to standard error.
void writeLog(LogLevel level, const String& text);

}  // namespace zn::detail
