#include "tools/vsa/dump/dump_log.h"

#include <utility>

#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

vsa::ReadOptions DumpLog::options() {
  vsa::ReadOptions options = arguments_.options();
  options.onDiagnostic = [this](const vsa::Diagnostic& found) { add(found); };
  options.wantsDiagnostic = [this](vsa::DiagnosticId) { return hasRoom(); };
  return options;
}

// Returns whether a further diagnostic may fit. Counts it if not.
bool DumpLog::hasRoom() {
  if (!isFull_ && kept_ < arguments_.maxDiagnostics()) return true;
  ++notKept_;
  return false;
}

void DumpLog::add(const vsa::Diagnostic& diagnostic) {
  std::string line = arguments_.lineOf(diagnostic);
  const bool tellsEnd = end_.isToldBy(diagnostic);
  if (diagnostic.endedReading) {
    fatal_ = std::move(line);
    return;
  }
  const bool fits = !isFull_ && kept_ < arguments_.maxDiagnostics() && line.size() <= MAX_BYTES &&
                    json_.text().size() <= MAX_BYTES - line.size();
  isFull_ = !fits;
  if (fits || tellsEnd) {
    put(diagnostic.severity, line);
  } else {
    ++notKept_;
  }
}

void DumpLog::put(vsa::Severity severity, std::string_view line) {
  if (kept_++ > 0) json_.put(',');
  const bool isWarning = severity == vsa::Severity::Warning;
  dumpLogEntry(isWarning ? zn::LogLevel::Warning : zn::LogLevel::Error, line, json_);
}

// Ends the log. An error before the first statement becomes `escaped` and is not logged. This is an
// error in the first three tokens, which the parser requests in advance. The plain entry point
// throws such an error and does not log it, either.
ReadStatus DumpLog::end(const vsa::ReadOutcome& read) {
  ReadStatus status;
  status.result = read.applied.linksResolved && read.status != vsa::ReadStatus::OverLimit;
  const bool isEscaped =
      read.applied.statements == 0 && (read.status == vsa::ReadStatus::StoppedByError ||
                                       read.status == vsa::ReadStatus::OutOfMemory);
  if (isEscaped) {
    status.escaped = fatal_.value_or(read.message);
  } else if (fatal_) {
    put(vsa::Severity::Error, *fatal_);
  }
  return status;
}

}  // namespace vsa_tools
