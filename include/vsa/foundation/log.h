// The log of the plain interface: warnings and errors as lines of text. The host sets the sink that
// receives these lines. The reading functions of namespace vsa return their diagnostics and write
// nothing to the log.
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn {

/// The severity of a log line. An Error stops the parse or rejects a value. Any other problem is a
/// Warning: see korvo_sdk::Severity.
enum class LogLevel { Warning, Error };

/// Receives the lines of the log. If several threads read, all of them may call a shared sink at
/// the same time. A std::runtime_error that a sink throws stops the parse, and its message is
/// logged to the same sink. If the sink then throws again, that exception propagates out of the
/// entry point. Any other exception propagates out of the entry point.
class VSA_API LogSink {
 public:
  virtual ~LogSink() = default;
  /// Receives one message. The log adds no line end to it. A message can contain parts of the text
  /// that is read. These parts are not escaped: they may contain line ends and control characters,
  /// may have any length, and may be invalid UTF-8.
  virtual void write(LogLevel level, const String& text) = 0;
};

/// Sets the sink of the process. Returns the previous sink, or null if the log went to standard
/// error. For a null sink the log goes to standard error, as lines "warning: TEXT" and "error:
/// TEXT". TEXT then ends at its first NUL. The host owns the sink. It may destroy the sink when
/// another one is set and no thread writes to the old one any more. Any thread may call this
/// function.
VSA_API LogSink* setLogSink(LogSink* sink) noexcept;

/// Sets the sink of this thread. It receives the log lines of the thread instead of the sink of the
/// process. Returns the previous sink of the thread, or null if there was none. A null sink removes
/// the sink of the thread. The host owns the sink and must keep it until it sets another one or the
/// thread ends.
VSA_API LogSink* setThreadLogSink(LogSink* sink) noexcept;

/// Sets the sink of this thread. The destructor restores the previous sink. Destroy such objects on
/// the thread that created them, in reverse order of their creation.
class VSA_API ScopedLogSink {
 public:
  /// Sets the sink of this thread. With a null sink, the thread uses the sink of the process.
  explicit ScopedLogSink(LogSink* sink) noexcept : before_(setThreadLogSink(sink)) {}
  ~ScopedLogSink() { setThreadLogSink(before_); }
  ScopedLogSink(const ScopedLogSink&) = delete;
  ScopedLogSink& operator=(const ScopedLogSink&) = delete;

 private:
  LogSink* before_;
};

/// Logs a warning. The parameters are those of String::format. Throws std::bad_alloc and the
/// exceptions of the sink.
VSA_API void logWarning(const char* fmt, ...) VSA_PRINTF(1, 2);
/// Logs an error, in the same way.
VSA_API void logError(const char* fmt, ...) VSA_PRINTF(1, 2);

}  // namespace zn
