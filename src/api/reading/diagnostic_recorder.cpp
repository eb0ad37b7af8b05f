#include "api/reading/diagnostic_recorder.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "api/reading/message_path.h"
#include "vsa/apply/input_path.h"

namespace vsa {

namespace {

using zn::String;
using Record = DiagnosticRecorder::Record;
using zn::korvo_sdk::impl::AssignInfo;
using zn::korvo_sdk::impl::ReadSession;
using zn::korvo_sdk::impl::TextPlace;
using zn::korvo_sdk::impl::Token;

std::string stringOf(const String& text) {
  return std::string(text.view());
}

Severity severityOf(const Record& record) {
  return record.severity() == zn::korvo_sdk::Severity::Warning ? Severity::Warning
                                                               : Severity::Error;
}

std::uint64_t bytesOf(const Diagnostic& diagnostic) {
  return sizeof(Diagnostic) + diagnostic.message.size() + diagnostic.kind.size() +
         diagnostic.inputPath.size();
}

}  // namespace

DiagnosticRecorder::DiagnosticRecorder(const ReadOptions& options, ReadOutcome& outcome,
                                       Ending& ending, TextIndex& index, const VsaParser& parser)
    : options_(options), outcome_(outcome), ending_(ending), index_(index), parser_(parser) {
}

void DiagnosticRecorder::add(const Record& record) {
  const bool ended = record.severity() == zn::korvo_sdk::Severity::Fatal;
  count(severityOf(record));
  if (isWanted(ended)) {
    Diagnostic diagnostic;
    diagnostic.id = static_cast<DiagnosticId>(record.id);
    diagnostic.severity = severityOf(record);
    diagnostic.endedReading = ended;
    diagnostic.message = stringOf(record.text);
    diagnostic.kind = stringOf(record.kind());
    diagnostic.logLineNumber = record.line;
    diagnostic.logColumn = record.column;
    diagnostic.inputPath = inputPathOf(record);
    diagnostic.range = rangeOf(record);
    deliver(std::move(diagnostic));
  } else {
    ++outcome_.droppedDiagnostics;
  }
  checkLimit(ended);
}

void DiagnosticRecorder::add(DiagnosticId id, Severity severity, bool endedReading,
                             std::string message) {
  count(severity);
  if (!isWanted(endedReading)) {
    ++outcome_.droppedDiagnostics;
    return;
  }
  Diagnostic diagnostic;
  diagnostic.id = id;
  diagnostic.severity = severity;
  diagnostic.endedReading = endedReading;
  diagnostic.message = std::move(message);
  diagnostic.inputPath = statementPath();
  const std::uint64_t at = parser_.lexer == nullptr ? 0 : index_.offsetOf(*parser_.lexer);
  diagnostic.range = index_.rangeOf(at, at);
  deliver(std::move(diagnostic));
}

// Without a callback, a diagnostic that is not kept is not put together.
bool DiagnosticRecorder::isWanted(bool endedReading) const noexcept {
  const bool isKept = outcome_.diagnostics.size() < options_.keptDiagnostics &&
                      keptBytes_ < options_.keptDiagnosticBytes;
  return isKept || endedReading || options_.onDiagnostic != nullptr;
}

void DiagnosticRecorder::deliver(Diagnostic&& diagnostic) {
  if (options_.onDiagnostic != nullptr) {
    ending_.callHost([&] { options_.onDiagnostic(diagnostic); });
  }
  const std::uint64_t bytes = bytesOf(diagnostic);
  const bool fits = outcome_.diagnostics.size() < options_.keptDiagnostics &&
                    bytes <= options_.keptDiagnosticBytes &&
                    keptBytes_ <= options_.keptDiagnosticBytes - bytes;
  if (!fits && !diagnostic.endedReading) {
    ++outcome_.droppedDiagnostics;
    return;
  }
  outcome_.diagnostics.push_back(std::move(diagnostic));
  keptBytes_ += bytes;
}

void DiagnosticRecorder::count(Severity severity) noexcept {
  ++(severity == Severity::Warning ? outcome_.warningCount : outcome_.errorCount);
}

void DiagnosticRecorder::checkLimit(bool endedReading) {
  const std::uint64_t found = outcome_.errorCount + outcome_.warningCount;
  if (endedReading || found <= options_.limits.diagnostics) return;
  outcome_.limit = Limit::Diagnostics;
  const std::string message =
      "more than " + std::to_string(options_.limits.diagnostics) + " diagnostics";
  add(DiagnosticId::OverLimit, Severity::Error, true, message);
  ending_.stop(ReadStatus::OverLimit, message);
}

// The token that the record names; the invalid character; for a link, the end of its statement.
TextRange DiagnosticRecorder::rangeOf(const Record& record) {
  std::uint64_t begin = 0;
  if (record.offset != Record::UNKNOWN_OFFSET) {
    begin = static_cast<std::uint64_t>(record.offset);
  } else {
    const bool hasPlace = record.line != 0;
    const ReadSession* const session = parser_.session;
    const TextPlace link = session == nullptr ? TextPlace() : session->statement();
    begin = index_.offsetOf(hasPlace ? TextPlace{record.line, record.column} : link);
  }
  begin = std::min(begin, index_.end());
  return index_.rangeOf(begin, std::min(begin + 1, index_.end()));
}

std::string DiagnosticRecorder::inputPathOf(const Record& record) const {
  const std::string_view named = pathInMessage(record.id, record.text.view());
  return named.empty() ? statementPath() : std::string(named);
}

// The left-hand side of the current assignment, with the name of the node.
std::string DiagnosticRecorder::statementPath() const {
  const ReadSession* const session = parser_.session;
  const AssignInfo* const info = session == nullptr ? nullptr : session->assignment();
  if (info == nullptr) return {};
  const std::string path = stringOf(zn::korvo_sdk::impl::collapsedPath(info->targetPath));
  const bool isOfWithNode = info->targetPath[0].type == Token::Type::Dot;
  if (!isOfWithNode || parser_.withNode == nullptr) return path;
  return stringOf(parser_.withNode->name()) + path;
}

}  // namespace vsa
