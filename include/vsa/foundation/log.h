// The library's log: warnings and errors as lines of text, written to a sink that the host sets.
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn {

/// The severity of a log line. An Error may stop the parse or reject one value. A Warning does not
/// change the result.
enum class LogLevel { Warning, Error };

/// Receives the log. Threads that read at the same time call it at the same time, unless each has
/// its own sink. Exceptions of the sink are handled like those of a scene: a std::runtime_error
/// stops the parse and is logged, to the same sink. Any other exception propagates out of the entry
/// point.
class VSA_API LogSink {
 public:
  virtual ~LogSink() = default;
  /// Receives one complete message without a line end. Text quoted from the input is unchanged: it
  /// may contain line ends and control characters, have any length, and not be valid UTF-8.
  virtual void write(LogLevel level, const String& text) = 0;
};

/// Sets the sink of the process. Returns the previous sink, or null if the log went to standard
/// error. A null sink selects standard error, with lines "warning: TEXT" and "error: TEXT". The
/// host owns the sink and must keep it alive until it is replaced and no other thread writes to it.
/// May be called from any thread.
VSA_API LogSink* setLogSink(LogSink* sink) noexcept;

/// Sets the sink of this thread. The log lines of the thread then go to this sink and not to the
/// sink of the process. Returns the previous sink of the thread, or null if there was none. A null
/// sink removes the sink of the thread. The host owns the sink and must keep it alive until it is
/// replaced or the thread ends.
VSA_API LogSink* setThreadLogSink(LogSink* sink) noexcept;

/// Sets the sink of this thread. The destructor restores the previous one. Destroy the objects on
/// the thread that created them, in reverse order of creation.
class VSA_API ScopedLogSink {
 public:
  /// If the sink is null, the thread uses the sink of the process, as with setThreadLogSink.
  explicit ScopedLogSink(LogSink* sink) noexcept : before_(setThreadLogSink(sink)) {}
  ~ScopedLogSink() { setThreadLogSink(before_); }
  ScopedLogSink(const ScopedLogSink&) = delete;
  ScopedLogSink& operator=(const ScopedLogSink&) = delete;

 private:
  LogSink* before_;
};

/// Logs a message, formatted like String::format. Throws std::bad_alloc and the exceptions of the
/// sink.
VSA_API void logWarning(const char* fmt, ...) VSA_PRINTF(1, 2);
VSA_API void logError(const char* fmt, ...) VSA_PRINTF(1, 2);

}  // namespace zn
