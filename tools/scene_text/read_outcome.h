// The outcome of one read: its result, the exception that it threw, and the log.
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

/// A sink that keeps every record in memory.
class DiagnosticCapture : public zn::korvo_sdk::DiagnosticSink {
 public:
  void report(const zn::korvo_sdk::Diagnostic& diagnostic) override {
    diagnostics.push_back(diagnostic);
  }

  std::vector<zn::korvo_sdk::Diagnostic> diagnostics;
};

/// How a read ended.
struct ReadStatus {
  /// The result of the entry point; false if it threw.
  bool result = false;
  /// The text of the exception that the entry point threw, or "unknown exception" if it is no
  /// std::exception. Not set if the entry point returned.
  std::optional<std::string> escaped;
  /// The record of that exception, if it is a diagnostic.
  std::optional<zn::korvo_sdk::Diagnostic> escapedDiagnostic = std::nullopt;
};

struct ReadOutcome : ReadStatus {
  std::vector<LogEntry> log;
  /// The records of the diagnostics, in the order in which they were found.
  std::vector<zn::korvo_sdk::Diagnostic> diagnostics = {};
};

/// Calls `entryPoint()`, which returns bool, while `sink` receives the log of this thread. Catches
/// every exception that it throws.
template <class EntryPoint>
ReadStatus captureRead(EntryPoint entryPoint, zn::LogSink& sink) {
  ReadStatus status;
  const zn::ScopedLogSink scope(&sink);
  try {
    status.result = entryPoint();
  } catch (const zn::korvo_sdk::DiagnosticError& error) {
    status.escaped = error.what();
    status.escapedDiagnostic = error.diagnostic();
  } catch (const std::exception& error) {
    status.escaped = error.what();
  } catch (...) {
    status.escaped = "unknown exception";
  }
  return status;
}

/// Like the captureRead() above, but keeps the log and its records in memory.
template <class EntryPoint>
ReadOutcome captureRead(EntryPoint entryPoint) {
  LogCapture log;
  DiagnosticCapture records;
  const zn::korvo_sdk::ScopedDiagnosticSink scope(&records);
  ReadOutcome outcome;
  static_cast<ReadStatus&>(outcome) = captureRead(std::move(entryPoint), log);
  outcome.log = std::move(log.entries);
  outcome.diagnostics = std::move(records.diagnostics);
  return outcome;
}

}  // namespace vsa_tools
