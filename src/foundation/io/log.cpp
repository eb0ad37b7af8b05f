// The log. A message is written to the sink of the thread, else to the sink of the process, else to
// standard error.
#include <vsa/foundation/log.h>

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>

#include "foundation/base/argument_list.h"
#include "foundation/io/log_write.h"

namespace zn {

namespace {

std::atomic<LogSink*> processSink{nullptr};
thread_local LogSink* threadSink = nullptr;

// The maximum size of a text that is written with one call of fprintf. A longer text is written
// with fwrite, because fprintf fails if it would write more than INT_MAX characters.
constexpr std::size_t MAX_FORMATTED_BYTES = std::size_t{1} << 20;

void writeToStandardError(LogLevel level, const String& text) {
  const char* const name = level == LogLevel::Warning ? "warning" : "error";
  const std::size_t bytes = std::strlen(text.buf());
  if (bytes <= MAX_FORMATTED_BYTES) {
    std::fprintf(stderr, "%s: %s\n", name, text.buf());
    return;
  }
  flockfile(stderr);  // The lock prevents other threads from writing inside the line.
  std::fprintf(stderr, "%s: ", name);
  std::fwrite(text.buf(), 1, bytes, stderr);
  std::fputc('\n', stderr);
  funlockfile(stderr);
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
  return std::exchange(threadSink, sink);
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
