// DiagnosticRecorder: converts diagnostics of the reader to diagnostics of the public API, counts
// them and stores them. Internal.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/read.h>
#include "api/reading/outcome/ending.h"
#include "api/reading/source_range/range_finder.h"
#include "api/reading/text/text_index.h"
#include "api/reading/text/text_store.h"
#include "vsa/parser.h"

namespace vsa {

class DiagnosticRecorder {
 public:
  using Record = zn::korvo_sdk::Diagnostic;
  using VsaParser = zn::korvo_sdk::impl::VsaParser;

  /// All arguments must exist as long as the recorder.
  DiagnosticRecorder(const ReadOptions& options, ReadOutcome& outcome, Ending& ending,
                     TextStore& store, TextIndex& index, const VsaParser& parser);

  /// Returns true if the caller must create a diagnostic with this id and severity, because it may
  /// be kept or a callback receives it. Otherwise counts the diagnostic and returns false. Call the
  /// function only for a diagnostic that does not end the reading. Throws ReadStopped if the limit
  /// of diagnostics is exceeded or a callback throws an exception.
  bool wants(DiagnosticId id, Severity severity);
  /// Records a diagnostic of the reader. Throws ReadStopped if the limit of diagnostics is exceeded
  /// or a callback throws an exception.
  void add(const Record& record);
  /// Records a problem for which the reader has created no diagnostic. Its range is the one that
  /// findSourceRange returns. If that function returns none, the range is a single character, or
  /// empty at the end of the text. There are two exceptions: the range of an EndMark is the byte
  /// 0xFF, and before the parse begins, the range is empty at the beginning of the text. `argument`
  /// is the argument of the message. It is not used if messages with this id have no argument.
  /// `limit` is the exceeded limit of an OverLimit.
  void add(DiagnosticId id, Severity severity, bool endedReading, std::string message,
           std::string_view argument = {}, std::optional<Limit> limit = std::nullopt);
  /// Records that the text exceeds a limit. `maximum` is the value of the limit.
  void addOverLimit(Limit limit, std::uint64_t maximum, bool endedReading, std::string message);

  /// Returns the left-hand side of the current assignment, as far as the parser has read it, with
  /// the name of the node. Returns an empty string if there is no assignment.
  std::string statementPath() const;

  std::uint64_t keptBytes() const noexcept { return keptBytes_; }

 private:
  bool isWantedByHost(DiagnosticId id);
  bool isWanted(bool endedReading, std::uint64_t messageBytes) const noexcept;
  bool keepsNoMore() const noexcept;
  // Whether there is room to keep a diagnostic with this number of bytes.
  bool fits(std::uint64_t bytes) const noexcept;
  void deliver(Diagnostic&& diagnostic);
  void keep(Diagnostic&& diagnostic);
  void count(Severity severity) noexcept;
  void checkLimit(bool endedReading);
  std::uint64_t startOf(zn::korvo_sdk::impl::TextPlace tokenBefore);
  std::uint64_t startOfStatement();
  void locate(Diagnostic& diagnostic, const Record& record);
  void locate(Diagnostic& diagnostic);
  void setRange(Diagnostic& diagnostic, std::uint64_t start, const Problem& problem);
  std::string inputPathOf(const Record& record) const;
  std::string currentPath() const;
  std::string pathOfException() const;
  std::string withNodeName() const;

  const ReadOptions& options_;
  ReadOutcome& outcome_;
  Ending& ending_;
  TextStore& store_;
  TextIndex& index_;
  const VsaParser& parser_;
  std::uint64_t keptBytes_ = 0;
  bool isFull_ = false;                 // whether a diagnostic was not kept for lack of room
  std::uint64_t currentStatement_ = 0;  // the offset of the current diagnostic's statement
  std::uint64_t keptStatement_ = 0;     // the offset of the last kept diagnostic's statement
  std::size_t firstOfStatement_ =
      0;  // the index of the first kept diagnostic of the last statement
};

}  // namespace vsa
