// Logs messages that are already formatted. Internal.
#pragma once

#include <vsa/foundation/log.h>

namespace zn::detail {

/// Passes `text` to the sink of this thread, or else to that of the process, or else to standard
/// error.
void writeLog(LogLevel level, const String& text);

}  // namespace zn::detail
