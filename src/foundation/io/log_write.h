// Writes messages that are already formatted to the log. Internal.
#pragma once

#include <vsa/foundation/log.h>

namespace zn::detail {

/// Writes `text` to the sink of this thread. Without such a sink, writes to the sink of the
/// process. Without both sinks, writes to standard error.
void writeLog(LogLevel level, const String& text);

}  // namespace zn::detail
