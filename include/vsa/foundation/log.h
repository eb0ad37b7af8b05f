// The library's log: warnings and errors as lines of text, written to a sink that the host sets.
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn {

/// The severity of a message. An Error may end the reading or refuse one value; a Warning changes
/// no result.
enum class LogLevel { Warning, Error };

/// Receives what is logged. Every thread that reads may call it, at the same time, unless each has
/// a sink of its own. The reader treats an exception of the sink as one of the scene: a
/// std::runtime_error ends the reading and is logged, again here; any other leaves the entry point.
class VSA_API LogSink {
 public:
  virtual ~LogSink() = default;
  /// One complete message, without a line end of its own. Text quoted in it is as it was read: it
  /// may have line ends, control characters, any length, and need not be UTF-8.
  virtual void write(LogLevel level, const String& text) = 0;
};

/// Sets the sink of the process and returns the previous one, null when that was standard error.
/// Null sets standard error, with lines "warning: TEXT" and "error: TEXT". The host owns the sink
/// and keeps it alive until it is replaced and no other thread writes to it. Safe to call from any
/// thread.
VSA_API LogSink* setLogSink(LogSink* sink) noexcept;

/// Sets the sink of this thread, used instead of that of the process, and returns the previous one,
/// null when there was none. Null removes it. The host owns the sink and keeps it alive until it is
/// replaced or the thread ends.
VSA_API LogSink* setThreadLogSink(LogSink* sink) noexcept;

/// Sets the sink of this thread for the lifetime of the object, and restores the previous one at
/// its end. Objects of one thread end in the reverse order of their construction.
class VSA_API ScopedLogSink {
 public:
  /// As setThreadLogSink: null is the sink of the process.
  explicit ScopedLogSink(LogSink* sink) noexcept : before_(setThreadLogSink(sink)) {}
  ~ScopedLogSink() { setThreadLogSink(before_); }
  ScopedLogSink(const ScopedLogSink&) = delete;
  ScopedLogSink& operator=(const ScopedLogSink&) = delete;

 private:
  LogSink* before_;
};

/// Logs a message, formatted as by String::format. Throws std::bad_alloc and what the sink throws.
VSA_API void logWarning(const char* fmt, ...) VSA_PRINTF(1, 2);
VSA_API void logError(const char* fmt, ...) VSA_PRINTF(1, 2);

}  // namespace zn
