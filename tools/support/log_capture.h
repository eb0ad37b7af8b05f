// One read of a text, watched: how it ended, and, with a log sink that remembers, what it said.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <vsa/diagnostics/diagnostic.h>
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

/// Keeps the records of all that is reported.
class DiagnosticCapture : public zn::korvo_sdk::DiagnosticSink {
 public:
  void report(const zn::korvo_sdk::Diagnostic& diagnostic) override {
    diagnostics.push_back(diagnostic);
  }

  std::vector<zn::korvo_sdk::Diagnostic> diagnostics;
};

/// How one read ended.
struct ReadEnd {
  /// The entry point's result; false when an exception left it.
  bool result = false;
  /// The text of the exception that left the entry point, if one did.
  std::optional<std::string> escaped;
  /// Its record, if it was a diagnostic.
  std::optional<zn::korvo_sdk::Diagnostic> escapedDiagnostic = std::nullopt;
};

/// How one read ended, its log and its records.
struct ReadOutcome : ReadEnd {
  std::vector<LogEntry> log;
  /// One for each line of the log that is about the text.
  std::vector<zn::korvo_sdk::Diagnostic> diagnostics;
};

/// Calls `entryPoint()`, which returns bool, with this thread's log going to `sink`. Nothing that
/// it throws gets past.
template <class EntryPoint>
ReadEnd watchRead(EntryPoint entryPoint, zn::LogSink& sink) {
  ReadEnd end;
  const zn::ScopedLogSink scope(&sink);
  try {
    end.result = entryPoint();
  } catch (const zn::korvo_sdk::DiagnosticError& error) {
    end.escaped = error.what();
    end.escapedDiagnostic = error.diagnostic();
  } catch (const std::exception& error) {
    end.escaped = error.what();
  } catch (...) {
    end.escaped = "unknown exception";
  }
  return end;
}

/// The same with log and records captured.
template <class EntryPoint>
ReadOutcome watchRead(EntryPoint entryPoint) {
  LogCapture log;
  DiagnosticCapture records;
  const zn::korvo_sdk::ScopedDiagnosticSink scope(&records);
  ReadEnd end = watchRead(std::move(entryPoint), log);
  return {std::move(end), std::move(log.entries), std::move(records.diagnostics)};
}

}  // namespace vsa_tools
