// RecordSink: the sink of a reading that keeps records and needs no log lines. Internal.
#pragma once

#include <vsa/diagnostics/diagnostic.h>

namespace zn::korvo_sdk {

/// While it is installed, the lines of records are not formatted and not logged. Exceptions are
/// handled like those of a log sink.
class RecordSink : public DiagnosticSink {
 public:
  /// Asked before the text of a record is made that does not stop the parse. False: the sink has
  /// counted the record and does not want it. Its text may quote a path of any length.
  virtual bool wants(DiagnosticId id) = 0;
};

/// Installs a sink for the current thread. The destructor restores the previous ones.
class ScopedRecordSink {
 public:
  explicit ScopedRecordSink(RecordSink* sink) noexcept;
  ~ScopedRecordSink();
  ScopedRecordSink(const ScopedRecordSink&) = delete;
  ScopedRecordSink& operator=(const ScopedRecordSink&) = delete;

 private:
  ScopedDiagnosticSink records_;
  RecordSink* previous_;
};

/// Whether the record sink of this thread wants a record of that kind; true if there is no sink.
bool isWanted(DiagnosticId id);

}  // namespace zn::korvo_sdk
