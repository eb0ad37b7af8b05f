#include "api/reading/outcome/diagnostic_recorder.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

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

std::vector<std::string> stringsOf(const std::vector<String>& texts) {
  std::vector<std::string> strings;
  strings.reserve(texts.size());
  for (const String& text : texts) strings.push_back(stringOf(text));
  return strings;
}

Severity severityOf(const Record& record) {
  return record.severity() == zn::korvo_sdk::Severity::Warning ? Severity::Warning
                                                               : Severity::Error;
}

// Whether this is a message of the lexer without an input path. The lexer is ahead of the parser,
// so the parser may not have read the path yet.
bool namesNoPath(const Diagnostic& diagnostic) {
  return diagnostic.inputPath.empty() && (diagnostic.id == DiagnosticId::InvalidToken ||
                                          diagnostic.id == DiagnosticId::InvalidListToken);
}

// Whether `path` is the path of an element of the array `array`.
bool isElementOf(std::string_view path, std::string_view array) {
  if (!path.starts_with(array)) return false;
  path.remove_prefix(array.size());
  return path.size() > 1 && path.find_first_of("[.", 1) == path.npos && path[0] == '[';
}

std::uint64_t bytesOf(const Diagnostic& diagnostic) {
  std::uint64_t bytes = sizeof(Diagnostic) + diagnostic.message.size() + diagnostic.kind.size() +
                        diagnostic.inputPath.size();
  for (const std::string& each : diagnostic.arguments) bytes += sizeof(std::string) + each.size();
  return bytes;
}

// Returns the path of the input or array that is an argument of the message. Returns an empty
// string if the message has no such argument.
std::string pathOf(const Record& record) {
  const String array = record.argument("array");
  return stringOf(array.isEmpty() ? record.argument("input") : array);
}

}  // namespace

DiagnosticRecorder::DiagnosticRecorder(const ReadOptions& options, ReadOutcome& outcome,
                                       Ending& ending, TextStore& store, TextIndex& index,
                                       const VsaParser& parser)
    : options_(options),
      outcome_(outcome),
      ending_(ending),
      store_(store),
      index_(index),
      parser_(parser) {
}

bool DiagnosticRecorder::wants(DiagnosticId id, Severity severity) {
  if (isWantedByHost(id) && (options_.onDiagnostic != nullptr || !keepsNoMore())) return true;
  count(severity);
  checkLimit(false);
  return false;
}

void DiagnosticRecorder::add(const Record& record) {
  const bool ended = record.severity() == zn::korvo_sdk::Severity::Fatal;
  count(severityOf(record));
  if (isWanted(ended, record.text.len())) {
    Diagnostic diagnostic;
    diagnostic.id = static_cast<DiagnosticId>(record.id);
    diagnostic.severity = severityOf(record);
    diagnostic.endedReading = ended;
    diagnostic.message = stringOf(record.text);
    diagnostic.arguments = stringsOf(record.arguments);
    diagnostic.kind = stringOf(record.kind());
    if (record.hasPosition()) {
      diagnostic.logLineNumber = record.line;
      diagnostic.logColumn = record.column;
    }
    diagnostic.inputPath = inputPathOf(record);
    locate(diagnostic, record);
    deliver(std::move(diagnostic));
  } else {
    isFull_ = true;
  }
  checkLimit(ended);
}

void DiagnosticRecorder::add(DiagnosticId id, Severity severity, bool endedReading,
                             std::string message, std::string_view argument,
                             std::optional<Limit> limit) {
  count(severity);
  if (isWanted(endedReading, message.size())) {
    Diagnostic diagnostic;
    diagnostic.id = id;
    diagnostic.severity = severity;
    diagnostic.endedReading = endedReading;
    diagnostic.message = std::move(message);
    if (*argumentNames(id) != '\0') diagnostic.arguments.emplace_back(argument);
    diagnostic.limit = limit;
    diagnostic.inputPath = id == DiagnosticId::HostError ? pathOfException() : statementPath();
    locate(diagnostic);
    deliver(std::move(diagnostic));
  } else {
    isFull_ = true;
  }
  checkLimit(endedReading);
}

void DiagnosticRecorder::addOverLimit(Limit limit, std::uint64_t maximum, bool endedReading,
                                      std::string message) {
  add(DiagnosticId::OverLimit, Severity::Error, endedReading, std::move(message),
      std::to_string(maximum), limit);
}

bool DiagnosticRecorder::isWantedByHost(DiagnosticId id) {
  if (options_.wantsDiagnostic == nullptr) return true;
  return ending_.callHost([&] { return options_.wantsDiagnostic(id); });
}

// Whether the diagnostic is necessary: it ends the reading, a callback receives it, or there may be
// room to keep it. The path of a diagnostic may be long, and takes time to create. So a diagnostic
// that is not necessary is not created.
bool DiagnosticRecorder::isWanted(bool endedReading, std::uint64_t messageBytes) const noexcept {
  return endedReading || options_.onDiagnostic != nullptr ||
         fits(sizeof(Diagnostic) + messageBytes);
}

bool DiagnosticRecorder::keepsNoMore() const noexcept {
  return isFull_ || outcome_.diagnostics.size() >= options_.keptDiagnostics;
}

bool DiagnosticRecorder::fits(std::uint64_t bytes) const noexcept {
  return !keepsNoMore() && bytes <= options_.keptDiagnosticBytes &&
         keptBytes_ <= options_.keptDiagnosticBytes - bytes;
}

void DiagnosticRecorder::deliver(Diagnostic&& diagnostic) {
  if (options_.onDiagnostic != nullptr) {
    ending_.callHost([&] { options_.onDiagnostic(diagnostic); });
  }
  const std::uint64_t bytes = bytesOf(diagnostic);
  if (fits(bytes) || diagnostic.endedReading) {
    keep(std::move(diagnostic));
    keptBytes_ += bytes;
  } else {
    isFull_ = true;
  }
}

// Inserts the diagnostic. The kept diagnostics of one statement are sorted by position.
void DiagnosticRecorder::keep(Diagnostic&& diagnostic) {
  std::vector<Diagnostic>& kept = outcome_.diagnostics;
  if (currentStatement_ != keptStatement_) {
    keptStatement_ = currentStatement_;
    firstOfStatement_ = kept.size();
  }
  const auto after =
      std::upper_bound(kept.begin() + static_cast<std::ptrdiff_t>(firstOfStatement_), kept.end(),
                       diagnostic, [](const Diagnostic& a, const Diagnostic& b) {
                         return a.range.begin.offset < b.range.begin.offset;
                       });
  kept.insert(after, std::move(diagnostic));
  --outcome_.droppedDiagnostics;
}

// Counts a diagnostic, at first as dropped. `keep` corrects the count when it stores the
// diagnostic. So the count is right even if the callback or the allocation throws an exception.
void DiagnosticRecorder::count(Severity severity) noexcept {
  ++(severity == Severity::Warning ? outcome_.warningCount : outcome_.errorCount);
  ++outcome_.droppedDiagnostics;
}

void DiagnosticRecorder::checkLimit(bool endedReading) {
  const std::uint64_t found = outcome_.errorCount + outcome_.warningCount;
  if (endedReading || found <= options_.limits.diagnostics) return;
  outcome_.limit = Limit::Diagnostics;
  const std::string message =
      "more than " + std::to_string(options_.limits.diagnostics) + " diagnostics";
  addOverLimit(Limit::Diagnostics, options_.limits.diagnostics, true, message);
  ending_.stop(ReadStatus::OverLimit, message);
}

// --- the source range ---

// Returns the offset after the last character of `tokenBefore`. If the line of `tokenBefore` is 0,
// there is no such token, and the function returns 0.
std::uint64_t DiagnosticRecorder::startOf(TextPlace tokenBefore) {
  return tokenBefore.line == 0 ? 0 : std::min(index_.offsetOf(tokenBefore) + 1, index_.end());
}

// Returns the start of the current statement, or of the statement whose link is being resolved.
// While inputs are released, there is no such statement, and the function returns the end of the
// text.
std::uint64_t DiagnosticRecorder::startOfStatement() {
  const ReadSession& session = *parser_.session;
  const bool isReleasing = session.isResolving() && session.link() == nullptr;
  return isReleasing ? index_.end() : startOf(session.statement());
}

void DiagnosticRecorder::locate(Diagnostic& diagnostic, const Record& record) {
  const ReadSession& session = *parser_.session;
  const std::uint64_t start = startOfStatement();
  Problem problem{diagnostic, start, std::nullopt};
  if (record.offset != Record::UNKNOWN_OFFSET) {
    problem.character = static_cast<std::uint64_t>(record.offset);
    problem.noticed = *problem.character + 1;
  } else if (record.line != 0) {
    problem.noticed = startOf({record.line, record.column});
  } else if (!session.isResolving()) {
    problem.noticed = startOf({parser_.current.line, parser_.current.column});
  }
  // The parser does not consume a token that the grammar does not allow. The next token is
  // therefore the token that caused the problem.
  const auto& next = parser_.tokens;
  problem.isAtEnd = next.size != 0 && next.data[parser_.head].type == Token::Type::Eof;
  setRange(diagnostic, start, problem);
  // If an element has the wrong type, the message contains the path of the array, but the
  // diagnostic contains the path of the element.
  if (diagnostic.id != DiagnosticId::CannotAssignType) return;
  if (diagnostic.argument("expected") != "Array") return;
  std::string path = statementPath();
  if (isElementOf(path, diagnostic.inputPath)) diagnostic.inputPath = std::move(path);
}

void DiagnosticRecorder::locate(Diagnostic& diagnostic) {
  if (parser_.session == nullptr || parser_.lexer == nullptr) return;
  if (diagnostic.id == DiagnosticId::EndMark) {
    const std::uint64_t mark = index_.offsetOf(*parser_.lexer);
    diagnostic.range = index_.rangeOf(mark, std::min(mark + 1, index_.end()));
    return;
  }
  const std::uint64_t last = startOf({parser_.current.line, parser_.current.column});
  if (diagnostic.id == DiagnosticId::UnexpectedEof) {
    return setRange(diagnostic, last, {diagnostic, last, std::nullopt});
  }
  const std::uint64_t start = startOfStatement();
  const std::uint64_t noticed = parser_.session->isResolving() ? start : last;
  setRange(diagnostic, start, {diagnostic, noticed, std::nullopt});
}

// Sets the range of a diagnostic to the range that the rules find. If they find none, the range is
// the last character of the token at which the parser detected the problem.
void DiagnosticRecorder::setRange(Diagnostic& diagnostic, std::uint64_t start,
                                  const Problem& problem) {
  currentStatement_ = start;
  // A token that begins no statement is found among the first tokens. The rest of the statement may
  // be long, and each of its tokens may be such a token, too.
  const auto extent = diagnostic.id == DiagnosticId::UnrecognizedToken
                          ? StatementTokens::Extent::Beginning
                          : StatementTokens::Extent::Statement;
  const StatementTokens tokens(store_, index_, start, problem.noticed, extent);
  std::optional<SourceRange> range = findSourceRange(problem, tokens);
  if (!range) {
    const std::uint64_t last = std::max(problem.noticed, start + 1) - 1;
    range = SourceRange{last, last + 1};
  }
  if (namesNoPath(diagnostic)) diagnostic.inputPath = pathAsWritten(tokens, withNodeName());
  diagnostic.numberIndex = range->numberIndex;
  const std::uint64_t begin = std::min(range->begin, index_.end());
  diagnostic.range = index_.rangeOf(begin, std::clamp(range->end, begin, index_.end()));
}

// --- the input concerned ---

std::string DiagnosticRecorder::inputPathOf(const Record& record) const {
  if (std::string named = pathOf(record); !named.empty()) return named;
  return currentPath();
}

// Returns the path of the input whose link is being resolved. If no link is being resolved, returns
// the path of the statement.
std::string DiagnosticRecorder::currentPath() const {
  const ReadSession* const session = parser_.session;
  if (session == nullptr || session->link() == nullptr) return statementPath();
  return stringOf(session->link()->path());
}

// Returns the path for a diagnostic about an exception of the host. If the host's path() throws,
// too, the path is empty, and the first exception is reported.
std::string DiagnosticRecorder::pathOfException() const {
  try {
    return currentPath();
  } catch (...) {
    return {};
  }
}

std::string DiagnosticRecorder::withNodeName() const {
  return parser_.withNode == nullptr ? std::string() : stringOf(parser_.withNode->name());
}

std::string DiagnosticRecorder::statementPath() const {
  const ReadSession* const session = parser_.session;
  if (session == nullptr || session->path().empty()) return {};
  const std::string path = stringOf(zn::korvo_sdk::impl::collapsedPath(session->path()));
  const bool isOfWithNode = session->path()[0].type == Token::Type::Dot;
  return isOfWithNode ? withNodeName() + path : path;
}

}  // namespace vsa
