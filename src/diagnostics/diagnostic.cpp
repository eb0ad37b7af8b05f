// Formats diagnostics as log lines, and stores the sinks of each thread.
#include <vsa/diagnostics/diagnostic.h>

#include <cstdarg>
#include <utility>

#include "diagnostics/emitter.h"
#include "diagnostics/reading_sinks.h"
#include "foundation/base/argument_list.h"
#include "foundation/io/log_write.h"

namespace zn::korvo_sdk {

namespace {

thread_local DiagnosticSink* threadSink = nullptr;
thread_local const ScopedReadingSinks* reading = nullptr;  // the sinks installed last

// Whether diagnostics are logged as lines. This is the case if there are no ScopedReadingSinks, as
// in the plain interface, or if another diagnostic sink was installed after them.
bool hasLines() {
  return reading == nullptr || threadSink != &reading->records();
}

LogLevel levelOf(Severity severity) {
  return severity == Severity::Warning ? LogLevel::Warning : LogLevel::Error;
}

// Returns the text of the exception: the log line up to its first NUL.
String whatOf(const Diagnostic& diagnostic) {
  return String(diagnostic.logLine().buf());
}

}  // namespace

String Diagnostic::kind() const {
  const char* const kind = rowOf(id).kind;
  return id != DiagnosticId::InvalidListToken ? String(kind)
                                              : diagnostic_detail::formatMessage(kind, list.buf());
}

String Diagnostic::argument(std::string_view name) const {
  const auto index = static_cast<std::size_t>(argumentIndex(rowOf(id).arguments, name));
  return index < arguments.size() ? arguments[index] : String();
}

String Diagnostic::logLine() const {
  if (!hasPosition()) return text;
  if (rowOf(id).position == PositionOf::LastCharacter) {
    return String::format("%s (%d,%d): %s", kind().buf(), line, column, text.buf());
  }
  return diagnostic_detail::positionedLine(kind(), line, column, text);
}

ScopedDiagnosticSink::ScopedDiagnosticSink(DiagnosticSink* sink) noexcept
    : previous_(std::exchange(threadSink, sink)) {
}

ScopedDiagnosticSink::~ScopedDiagnosticSink() {
  threadSink = previous_;
}

DiagnosticError::DiagnosticError(const Diagnostic& diagnostic)
    : std::runtime_error(whatOf(diagnostic).buf()), diagnostic_(diagnostic) {
}

DiagnosticError::~DiagnosticError() = default;

ScopedReadingSinks::ScopedReadingSinks(RecordSink& records, LogSink& lines) noexcept
    : records_(records),
      lines_(lines),
      outer_(std::exchange(reading, this)),
      previousRecords_(std::exchange(threadSink, &records)),
      previousLines_(setThreadLogSink(&lines)) {
}

ScopedReadingSinks::~ScopedReadingSinks() {
  reading = outer_;
  threadSink = previousRecords_;
  setThreadLogSink(previousLines_);
}

// Removes the sinks of all readings of this thread. A sink that the host has installed during a
// reading stays. If there is none, the sinks that were installed before the readings become active
// again.
ScopedHostSinks::ScopedHostSinks() noexcept : reading_(reading) {
  if (reading_ == nullptr) return;
  reading = nullptr;
  previousRecords_ = threadSink;
  previousLines_ = setThreadLogSink(nullptr);
  LogSink* lines = previousLines_;
  for (const ScopedReadingSinks* each = reading_; each != nullptr; each = each->outer_) {
    if (threadSink == &each->records_) threadSink = each->previousRecords_;
    if (lines == &each->lines_) lines = each->previousLines_;
  }
  setThreadLogSink(lines);
}

ScopedHostSinks::~ScopedHostSinks() {
  if (reading_ == nullptr) return;
  reading = reading_;
  threadSink = previousRecords_;
  setThreadLogSink(previousLines_);
}

bool isWanted(DiagnosticId id) {
  return hasLines() || reading->records().wants(id);
}

bool isReported() {
  return threadSink != nullptr;
}

void emit(const Diagnostic& diagnostic) {
  if (threadSink != nullptr) threadSink->report(diagnostic);
  if (!hasLines()) return;
  zn::detail::writeLog(levelOf(diagnostic.severity()), diagnostic.logLine());
}

void emitFatal(const std::runtime_error& error) {
  if (threadSink != nullptr) {
    const auto* const diagnosticError = dynamic_cast<const DiagnosticError*>(&error);
    if (diagnosticError != nullptr) {
      threadSink->report(diagnosticError->diagnostic());
    } else {
      Diagnostic record{DiagnosticId::HostError, String(error.what())};
      record.arguments = {record.text};
      threadSink->report(record);
    }
  }
  if (hasLines()) zn::detail::writeLog(LogLevel::Error, String(error.what()));
}

namespace diagnostic_detail {

String positionedLine(const String& kind, std::int32_t line, std::int32_t column,
                      const String& message) {
  return String::format("%s (%d,%d): %s.", kind.buf(), line, column, message.buf());
}

// Formats a message. See emitter.h for who checks the format against the types of the arguments.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
String formatMessage(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const zn::detail::ArgumentListEnd end(arguments);
  // cppcheck-suppress va_end_missing ; ArgumentListEnd calls it
  return String::formatv(format, arguments);
}
#pragma GCC diagnostic pop

}  // namespace diagnostic_detail

}  // namespace zn::korvo_sdk
