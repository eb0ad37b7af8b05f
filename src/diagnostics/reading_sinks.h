// The sinks of a reading that stores records and needs no log lines. Internal.
#pragma once

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/foundation/log.h>

namespace zn::korvo_sdk {

/// A sink for the records of a reading. While it is installed, the lines of records are not
/// formatted and not logged. Exceptions are handled like those of a log sink.
class RecordSink : public DiagnosticSink {
 public:
  /// Called before a record that does not stop the parse is formatted. Returns false if the sink
  /// has counted the record and drops it. Formatting it could take long, because it may quote a
  /// path of any length.
  virtual bool wants(DiagnosticId id) = 0;
};

/// Installs the sinks of a reading for the current thread: one for records, one for messages that
/// the host's scene logs. The destructor restores the previous sinks. Destroy the objects of this
/// header on the thread that created them, in reverse order of creation.
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
  const ScopedReadingSinks* const outer_;  // the enclosing reading, or null
  DiagnosticSink* const previousRecords_;
  LogSink* const previousLines_;
};

/// For a text that a scene or a callback of the host reads during a reading: its diagnostics go to
/// the sinks of the host. Installs these sinks: those that were installed before the outermost
/// reading began, or that the host has installed since. Does nothing if no reading runs. The
/// destructor restores the previous sinks.
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

/// The result of RecordSink::wants for the reading of this thread; true if no reading runs.
bool isWanted(DiagnosticId id);

}  // namespace zn::korvo_sdk
