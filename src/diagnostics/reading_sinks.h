// The sinks of a reading that stores diagnostics as records and does not log them as lines.
// Internal.
#pragma once

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/foundation/log.h>

namespace zn::korvo_sdk {

/// A sink for the diagnostics of a reading. While it is the diagnostic sink that was installed
/// last, diagnostics are not formatted as lines and not logged. An exception that this sink throws
/// has the same effect as an exception of a LogSink (see <vsa/foundation/log.h>).
class RecordSink : public DiagnosticSink {
 public:
  /// Called before the reader formats a diagnostic that does not stop the parse. Returns false to
  /// drop the diagnostic. A sink that returns false must count the diagnostic itself. Dropping a
  /// diagnostic saves the time to format its message, which may contain a path of any length.
  virtual bool wants(DiagnosticId id) = 0;
};

/// Installs the two sinks of a reading for the current thread: one for diagnostics, and one for
/// messages that the host's scene logs. The destructor restores the previous sinks. Destroy the
/// objects of this header on the thread that created them, in reverse order of their creation.
class ScopedReadingSinks {
 public:
  ScopedReadingSinks(RecordSink& records, LogSink& lines) noexcept;
  ~ScopedReadingSinks();
  ScopedReadingSinks(const ScopedReadingSinks&) = delete;
  ScopedReadingSinks& operator=(const ScopedReadingSinks&) = delete;

  RecordSink& records() const noexcept { return records_; }

 private:
  friend class ScopedHostSinks;

  RecordSink& records_;
  LogSink& lines_;
  const ScopedReadingSinks* const outer_;  // the enclosing reading of this thread, or null
  DiagnosticSink* const previousRecords_;
  LogSink* const previousLines_;
};

/// Installs the sinks of the host during a reading. A scene or a callback of the host may read
/// another text: the diagnostics of that text go to these sinks. They are the sinks that were
/// installed before the outermost reading began, or that the host has installed since then. Does
/// nothing if no reading is running. The destructor restores the previous sinks.
class ScopedHostSinks {
 public:
  ScopedHostSinks() noexcept;
  ~ScopedHostSinks();
  ScopedHostSinks(const ScopedHostSinks&) = delete;
  ScopedHostSinks& operator=(const ScopedHostSinks&) = delete;

 private:
  const ScopedReadingSinks* const reading_;
  DiagnosticSink* previousRecords_ = nullptr;
  LogSink* previousLines_ = nullptr;
};

/// Returns the result of RecordSink::wants for the ScopedReadingSinks of this thread. Returns true
/// if diagnostics are logged as lines: if there are no ScopedReadingSinks, or if another diagnostic
/// sink was installed after them.
bool isWanted(DiagnosticId id);

}  // namespace zn::korvo_sdk
