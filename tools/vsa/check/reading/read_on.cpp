#include "tools/vsa/check/reading/read_on.h"

#include <algorithm>
#include <deque>
#include <exception>
#include <optional>
#include <string>

#include "tools/vsa/check/reading/repair.h"
#include "tools/vsa/check/text/line_index.h"

namespace vsa_tools {

namespace {

using vsa::Diagnostic;
using vsa::DiagnosticId;

// The maximum number of readings of the whole text. Each may find mistakes that readParts() has
// missed. In practice, the first or second reading is complete.
constexpr int MAX_WHOLE_READINGS = 4;
// The number of tokens that the lexer may be ahead of the parser. Each of these tokens may be in
// another statement, so the lexer may also be ahead by this number of statements.
constexpr std::size_t LOOKAHEAD = 3;

bool isOfLexer(DiagnosticId id) {
  return id == DiagnosticId::InvalidToken || id == DiagnosticId::InvalidListToken ||
         id == DiagnosticId::UnexpectedEof || id == DiagnosticId::EndMark;
}

/// Returns the name of the node that the diagnostic reports as missing, or an empty text if it
/// reports something else.
std::string_view missingNode(const Diagnostic& found) {
  switch (found.id) {
    case DiagnosticId::NodeNotFound: {
      const std::string_view path = found.argument("path");
      return path.substr(0, path.find_first_of(".["));
    }
    case DiagnosticId::NoNodeToConnect:
    case DiagnosticId::NoNodeToAssign:
      return found.argument("node");
    default:
      return {};
  }
}

/// Moves over the statements of the repaired text and stores the current with node.
class StatementCursor {
 public:
  /// The beginning of a statement, and the with node before it (empty if there is none).
  struct Place {
    std::size_t begin;
    std::string with;
  };

  /// Moves to the end of the last statement that begins before `offset`.
  void moveTo(std::string_view text, std::size_t offset) {
    while (true) {
      const Statement next = nextStatement(text, at_, offset);
      if (next.begin >= offset || next.begin >= text.size()) return;
      push(next.begin);
      const std::string_view statement = text.substr(next.begin, next.end - next.begin);
      if (next.terminator == ':') with_ = nameBefore(statement, statement.size() - 1);
      at_ = next.end;
    }
  }

  /// Moves to a wrong statement that was replaced. The next call of moveTo() scans the text from
  /// there.
  void moveToReplaced(std::size_t begin) {
    push(begin);
    at_ = begin;
  }

  /// Moves back to the beginning of the last statement, and returns the offset of that beginning.
  std::size_t back() {
    if (places_.empty()) return at_;
    at_ = places_.back().begin;
    with_ = places_.back().with;
    places_.pop_back();
    return at_;
  }

  Place place() const { return {at_, with_}; }
  /// Returns the place LOOKAHEAD statements before the current one, or the first known place.
  Place earlierPlace() const { return places_.empty() ? place() : places_.front(); }

 private:
  void push(std::size_t begin) {
    if (places_.size() > LOOKAHEAD) places_.pop_front();
    places_.push_back({begin, with_});
  }

  std::size_t at_ = 0;
  std::string with_;
  std::deque<Place> places_;  // the places of the last statements
};

class FurtherReading {
 public:
  FurtherReading(std::string_view text, const vsa::ReadOptions& options,
                 const DiagnosticConsumer& consumer)
      : text_(text), lines_(text), repair_(text), options_(options), consumer_(consumer) {}

  ReadOnResult run(const Diagnostic& stop) {
    isNodeMissing_ = stop.id == DiagnosticId::WithNodeNotSet;
    addSuspect(stop);
    repair_.replace(stop, stop.range.begin.offset, 0);
    for (int count = 1;; ++count) {
      readParts();
      ReadOnResult whole{readWhole()};
      if (failure_) std::rethrow_exception(failure_);
      if (!fatal_ || count == MAX_WHOLE_READINGS) {
        whole.statements = repair_.takeStatements(text_);
        whole.lostInputs = repair_.lostInputs();
        return whole;
      }
      handleFatal(0);
    }
  }

 private:
  // Reads the text in parts into one scene, only to find the fatal diagnostics. The statements
  // before the stop are read again, because they create the nodes.
  void readParts() {
    vsa::Scene scene;
    StatementCursor cursor;
    while (readPart(scene, cursor.place(), repair_.text().size())) {
      const bool isLexer = isOfLexer(fatal_->id);
      cursor.moveTo(repair_.text(), fatal_->range.begin.offset + 1);
      handleFatal(cursor.back());
      if (repair_.hasReplacedNothing()) return;
      cursor.moveTo(repair_.text(), repair_.lastBegin());
      cursor.moveToReplaced(repair_.lastBegin());
      // The parser has not executed the statements that were in its lookahead, so they are read
      // again.
      if (isLexer) readPart(scene, cursor.earlierPlace(), repair_.lastBegin());
    }
  }

  /// Reads the part from `place` to `end` (exclusive). Returns whether a fatal diagnostic ended the
  /// reading.
  bool readPart(vsa::Scene& scene, const StatementCursor::Place& place, std::size_t end) {
    const std::string_view part = repair_.textFrom(place.begin, place.with);
    shift_ = repair_.text().size() - part.size();
    const vsa::ReadOutcome outcome = read(scene, part.substr(0, end - shift_), false);
    repair_.restore();
    return fatal_.has_value() && !outcome.exception;
  }

  vsa::ReadResult readWhole() {
    vsa::ReadResult result;
    shift_ = 0;
    static_cast<vsa::ReadOutcome&>(result) = read(result.scene, repair_.text(), true);
    return result;
  }

  vsa::ReadOutcome read(vsa::Scene& scene, std::string_view text, bool isWhole) {
    fatal_.reset();
    vsa::ReadOptions options = options_;
    options.keepHeader = !isWhole;
    options.wantsDiagnostic = [isWhole](vsa::DiagnosticId) { return isWhole; };
    options.onDiagnostic = [&](const Diagnostic& found) {
      if (found.endedReading) fatal_ = shifted(found);
      if (!found.endedReading && isWhole) report(shifted(found));
    };
    vsa::ReadOutcome outcome = vsa::readTextInto(scene, text, options);
    // Only an exception of the host is a failure. If the text declares a count that no memory can
    // hold, the status is OutOfMemory: that is a mistake of the text, which a diagnostic reports.
    if (outcome.status == vsa::ReadStatus::HostException) failure_ = outcome.exception;
    return outcome;
  }

  Diagnostic shifted(Diagnostic found) const {
    const auto move = [&](const vsa::TextPosition& position) {
      return lines_.positionOf(
          std::min<std::uint64_t>(position.offset + shift_, repair_.text().size()));
    };
    found.range = {move(found.range.begin), move(found.range.end)};
    return found;
  }

  void handleFatal(std::size_t scanFrom) {
    const Diagnostic found = *fatal_;
    const bool isFollowUp = isOfMissingNode(found);
    const bool isFirst = repair_.replace(found, found.range.begin.offset, scanFrom);
    if (isFirst && !isFollowUp) consumer_(found);
    addSuspect(found);
  }

  void report(const Diagnostic& found) {
    const std::string_view name = missingNode(found);
    if (name.empty() || !repair_.isSuspect(name)) consumer_(found);
  }

  /// Returns whether the diagnostic only follows from one that was already reported. If it is about
  /// a missing node, this is one about the same node, or about a statement that may have declared
  /// the node. If it is about a with node that is not set, this is any such diagnostic.
  bool isOfMissingNode(const Diagnostic& found) {
    if (found.id == DiagnosticId::WithNodeNotSet) return std::exchange(isNodeMissing_, true);
    const std::string_view name = missingNode(found);
    return !name.empty() && repair_.isSuspect(name);
  }

  void addSuspect(const Diagnostic& found) {
    if (const std::string_view name = missingNode(found); !name.empty()) repair_.addSuspect(name);
  }

  std::string_view text_;
  LineIndex lines_;
  Repair repair_;
  const vsa::ReadOptions& options_;
  const DiagnosticConsumer& consumer_;
  std::optional<Diagnostic> fatal_;  // the fatal diagnostic of the last reading
  std::exception_ptr failure_;
  // The offset of the part in the whole text. If a `with` statement was written before the part,
  // the offset is that of the `with` statement, and may be negative. A negative offset is stored
  // modulo 2^64.
  std::size_t shift_ = 0;
  bool isNodeMissing_ = false;
};

}  // namespace

ReadOnResult readOn(std::string_view text, const Diagnostic& stop, const vsa::ReadOptions& options,
                    const DiagnosticConsumer& consumer) {
  return FurtherReading(text, options, consumer).run(stop);
}

}  // namespace vsa_tools
