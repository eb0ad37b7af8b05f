// One read of a text, watched: how it ended, and, with a log sink that remembers, what it said.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <vsa/foundation/log.h>
#include <vsa/foundation/string.h>

namespace vsa_tools {

/// One logged line, its text byte for byte as the reader wrote it.
struct LogEntry {
  zn::LogLevel level;
  std::string text;

  friend bool operator==(const LogEntry&, const LogEntry&) = default;
};

/// Keeps all that is logged, to be compared and looked through. A log may be far longer than the
/// text that it is about: for texts of strangers take a sink that hands on what it gets.
class LogCapture : public zn::LogSink {
 public:
  void write(zn::LogLevel level, const zn::String& text) override {
    entries.push_back({level, std::string(text.buf(), text.len())});
  }

  std::vector<LogEntry> entries;
};

/// How one read ended.
struct ReadEnd {
  /// The entry point's result; false when an exception left it.
  bool result = false;
  /// The text of the exception that left the entry point, if one did.
  std::optional<std::string> escaped;
};

/// What came of one read: how it ended, and its log.
struct ReadOutcome {
  bool result = false;
  std::optional<std::string> escaped;
  std::vector<LogEntry> log;
};

/// Calls `entryPoint()`, which returns bool, with this thread's log going to `sink`. Nothing that
/// it throws gets past.
template <class EntryPoint>
ReadEnd captureRead(EntryPoint entryPoint, zn::LogSink& sink) {
  ReadEnd end;
  const zn::ScopedLogSink scope(&sink);
  try {
    end.result = entryPoint();
  } catch (const std::exception& error) {
    end.escaped = error.what();
  } catch (...) {
    end.escaped = "unknown exception";
  }
  return end;
}

/// The same with the log captured.
template <class EntryPoint>
ReadOutcome captureRead(EntryPoint entryPoint) {
  LogCapture capture;
  ReadEnd end = captureRead(std::move(entryPoint), capture);
  return {end.result, std::move(end.escaped), std::move(capture.entries)};
}

}  // namespace vsa_tools
