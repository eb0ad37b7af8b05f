// DiagnosticRecorder: converts the diagnostics of the reader to diagnostics of the public API,
// counts them and keeps them. Internal.
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

  /// All arguments must outlive the recorder.
  DiagnosticRecorder(const ReadOptions& options, ReadOutcome& outcome, Ending& ending,
                     TextStore& store, TextIndex& index, const VsaParser& parser);

  /// Whether a diagnostic of that severity, which does not end the reading, may be kept or
  /// delivered. If not, counts the diagnostic. May throw ReadStopped.
  bool wants(Severity severity);
  /// Records a diagnostic that the reader reports. Throws ReadStopped if the limit of diagnostics
  /// is exceeded or if a callback throws.
  void add(const Record& record);
  /// Records a problem that the reader does not report, at the token consumed last. `argument` is
  /// the argument of the message. It is ignored if messages of that id have no argument. `limit` is
  /// the exceeded limit for an OverLimit.
  void add(DiagnosticId id, Severity severity, bool endedReading, std::string message,
           std::string_view argument = {}, std::optional<Limit> limit = std::nullopt);
  /// Records that the text exceeds a limit whose value is `maximum`.
  void addOverLimit(Limit limit, std::uint64_t maximum, bool endedReading, std::string message);

  /// The left-hand side of the current assignment, with the name of the node. Empty if there is no
  /// assignment.
  std::string statementPath() const;

  /// The number of bytes of the kept diagnostics.
  std::uint64_t keptBytes() const noexcept { return keptBytes_; }

 private:
  bool isWanted(bool endedReading, std::uint64_t messageBytes) const noexcept;
  bool keepsNoMore() const noexcept;
  // Whether a diagnostic of that size can be kept.
  bool fits(std::uint64_t bytes) const noexcept;
  void deliver(Diagnostic&& diagnostic);
  void keep(Diagnostic&& diagnostic);
  void count(Severity severity) noexcept;
  void checkLimit(bool endedReading);
  std::uint64_t startOf(zn::korvo_sdk::impl::TextPlace tokenBefore);
  void locate(Diagnostic& diagnostic, const Record& record);
  void locate(Diagnostic& diagnostic);
  void setRange(Diagnostic& diagnostic, std::uint64_t start, const Problem& problem);
  std::string inputPathOf(const Record& record) const;
  std::string withNodeName() const;

  const ReadOptions& options_;
  ReadOutcome& outcome_;
  Ending& ending_;
  TextStore& store_;
  TextIndex& index_;
  const VsaParser& parser_;
  std::uint64_t keptBytes_ = 0;
  bool isFull_ = false;                 // true if a diagnostic did not fit
  std::uint64_t currentStatement_ = 0;  // where the current diagnostic's statement begins
  std::uint64_t keptStatement_ = 0;     // where the last kept diagnostic's statement begins
  std::size_t firstOfStatement_ = 0;    // the first kept diagnostic of that statement
};

}  // namespace vsa
