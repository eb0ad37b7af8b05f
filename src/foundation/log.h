// The library's log: warnings and errors as lines of text, to a sink that the host sets.
#pragma once

#include "foundation/api.h"
#include "foundation/string.h"

namespace zn {

enum class LogLevel { Warning, Error };

/// Takes what is logged. It may be called from every thread that reads, at the same time, unless
/// each has a sink of its own. What it throws leaves through the reader like a host's own
/// exception.
class VSA_API LogSink {
 public:
  virtual ~LogSink() = default;
  /// One message, complete, without a line end. Quoted parts stand in it as they were read.
  virtual void write(LogLevel level, const String& text) = 0;
};

/// Sets the sink of the whole process and returns the one before. Null is standard error, as
/// "warning: TEXT" and "error: TEXT". The sink stays the host's, and must outlive its use.
VSA_API LogSink* setLogSink(LogSink* sink) noexcept;

/// Sets the sink of this thread, which goes before that of the process, and returns the one before.
/// Null takes it away again.
VSA_API LogSink* setThreadLogSink(LogSink* sink) noexcept;

/// This thread's sink for as long as the object lives.
class VSA_API ScopedLogSink {
 public:
  explicit ScopedLogSink(LogSink* sink) noexcept : before_(setThreadLogSink(sink)) {}
  ~ScopedLogSink() { setThreadLogSink(before_); }
  ScopedLogSink(const ScopedLogSink&) = delete;
  ScopedLogSink& operator=(const ScopedLogSink&) = delete;

 private:
  LogSink* before_;
};

/// Logs a message, formatted as by String::format.
VSA_API void logWarning(const char* fmt, ...) VSA_PRINTF(1, 2);
VSA_API void logError(const char* fmt, ...) VSA_PRINTF(1, 2);

}  // namespace zn
