// The library's log: warnings and errors as lines of text, to a sink that the host sets.
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn {

/// How bad it is. An Error may end the reading or only refuse a value; a Warning changes no result.
enum class LogLevel { Warning, Error };

/// Takes what is logged. It may be called from every thread that reads, at the same time, unless
/// each has a sink of its own. What it throws goes through the reader as what a scene throws does:
/// a std::runtime_error ends the reading and is logged, here again; anything else leaves.
class VSA_API LogSink {
 public:
  virtual ~LogSink() = default;
  /// One message, complete, without a line end of its own. Quoted parts stand in it as they were
  /// read: with line ends and control characters, of any length, not always UTF-8.
  virtual void write(LogLevel level, const String& text) = 0;
};

/// Sets the sink of the whole process and returns the one before, null when it was standard error.
/// Null is standard error, as "warning: TEXT" and "error: TEXT". The sink stays the host's; it must
/// live until it is replaced and no other thread is writing to it. Safe from any thread.
VSA_API LogSink* setLogSink(LogSink* sink) noexcept;

/// Sets the sink of this thread, which takes the place of that of the process, and returns the one
/// before, null when there was none. Null takes it away again. The sink stays the host's, and must
/// live until it is replaced or the thread ends.
VSA_API LogSink* setThreadLogSink(LogSink* sink) noexcept;

/// This thread's sink for as long as the object lives; the one before comes back with its end. Made
/// and ended on one thread, and ended in the reverse order of making.
class VSA_API ScopedLogSink {
 public:
  /// As setThreadLogSink: null stands for the sink of the process.
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
