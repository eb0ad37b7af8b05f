// The outcome of one read: its result, the exception that left it, and the log.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <vsa/foundation/log.h>
#include <vsa/foundation/string.h>

namespace vsa_tools {

/// One logged message, byte for byte as the reader wrote it.
struct LogEntry {
  zn::LogLevel level;
  std::string text;

  friend bool operator==(const LogEntry&, const LogEntry&) = default;
};

/// A log sink that keeps every message in memory. A log can be far longer than the text that causes
/// it, so untrusted texts need a sink that does not keep messages.
class LogCapture : public zn::LogSink {
 public:
  void write(zn::LogLevel level, const zn::String& text) override {
    entries.push_back({level, std::string(text.buf(), text.len())});
  }

  std::vector<LogEntry> entries;
};

/// How a read ended.
struct ReadStatus {
  /// The result of the entry point; false if it threw.
  bool result = false;
  /// The text of the exception that the entry point threw.
  std::optional<std::string> escaped;
};

struct ReadOutcome : ReadStatus {
  std::vector<LogEntry> log;
};

/// Calls `entryPoint()`, which returns bool, while `sink` receives the log of this thread. Catches
/// every exception.
template <class EntryPoint>
ReadStatus captureRead(EntryPoint entryPoint, zn::LogSink& sink) {
  ReadStatus status;
  const zn::ScopedLogSink scope(&sink);
  try {
    status.result = entryPoint();
  } catch (const std::exception& error) {
    status.escaped = error.what();
  } catch (...) {
    status.escaped = "unknown exception";
  }
  return status;
}

/// The same, with the log kept in memory.
template <class EntryPoint>
ReadOutcome captureRead(EntryPoint entryPoint) {
  LogCapture capture;
  ReadOutcome outcome;
  static_cast<ReadStatus&>(outcome) = captureRead(std::move(entryPoint), capture);
  outcome.log = std::move(capture.entries);
  return outcome;
}

}  // namespace vsa_tools
