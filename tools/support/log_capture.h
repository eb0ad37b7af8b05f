// A log sink that remembers, and one read of a text with everything that came of it.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "foundation/log.h"
#include "foundation/string.h"

namespace vsa_tools {

/// One logged line, its text byte for byte as the reader wrote it.
struct LogEntry {
  zn::LogLevel level;
  std::string text;

  friend bool operator==(const LogEntry&, const LogEntry&) = default;
};

class LogCapture : public zn::LogSink {
 public:
  void write(zn::LogLevel level, const zn::String& text) override {
    entries.push_back({level, std::string(text.buf(), text.len())});
  }

  std::vector<LogEntry> entries;
};

/// What came of one read.
struct ReadOutcome {
  /// The entry point's result; false when an exception left it.
  bool result = false;
  /// The text of the exception that left the entry point, if one did.
  std::optional<std::string> escaped;
  std::vector<LogEntry> log;
};

/// Calls `entryPoint()`, which returns bool, with this thread's log captured. Nothing that it
/// throws gets past.
template <class EntryPoint>
ReadOutcome watchRead(EntryPoint entryPoint) {
  ReadOutcome outcome;
  LogCapture capture;
  {
    const zn::ScopedLogSink scope(&capture);
    try {
      outcome.result = entryPoint();
    } catch (const std::exception& error) {
      outcome.escaped = error.what();
    } catch (...) {
      outcome.escaped = "unknown exception";
    }
  }
  outcome.log = std::move(capture.entries);
  return outcome;
}

}  // namespace vsa_tools
