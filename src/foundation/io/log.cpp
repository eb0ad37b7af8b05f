// Selects the sink for a message: that of the thread, that of the process, or standard error.
#include <vsa/foundation/log.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>

#include "foundation/base/argument_list.h"
#include "foundation/io/log_write.h"

namespace zn {

namespace {

std::atomic<LogSink*> processSink{nullptr};
thread_local LogSink* threadSink = nullptr;

void writeToStandardError(LogLevel level, const String& text) {
  std::fprintf(stderr, "%s: %s\n", level == LogLevel::Warning ? "warning" : "error", text.buf());
}

}  // namespace

void detail::writeLog(LogLevel level, const String& text) {
  if (threadSink != nullptr) return threadSink->write(level, text);
  LogSink* const shared = processSink.load(std::memory_order_acquire);
  if (shared != nullptr) return shared->write(level, text);
  writeToStandardError(level, text);
}

LogSink* setLogSink(LogSink* sink) noexcept {
  return processSink.exchange(sink, std::memory_order_acq_rel);
}

LogSink* setThreadLogSink(LogSink* sink) noexcept {
  LogSink* const before = threadSink;
  threadSink = sink;
  return before;
}

void logWarning(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  const detail::ArgumentListEnd end(args);
  detail::writeLog(LogLevel::Warning, String::formatv(fmt, args));
  // cppcheck-suppress va_end_missing ; ArgumentListEnd calls it
}

void logError(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  const detail::ArgumentListEnd end(args);
  detail::writeLog(LogLevel::Error, String::formatv(fmt, args));
  // cppcheck-suppress va_end_missing ; ArgumentListEnd calls it
}

}  // namespace zn
