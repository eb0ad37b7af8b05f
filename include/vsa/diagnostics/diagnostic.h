// Diagnostics as data. Each problem is a record, and its log line is formatted from the record. To
// receive the records, install a DiagnosticSink.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <vsa/diagnostics/diagnostic_table.h>
#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// A problem in a text. A plain value.
struct Diagnostic {
  /// The value of `offset` when the offset is not known.
  static constexpr std::int64_t UNKNOWN_OFFSET = -1;

  DiagnosticId id = DiagnosticId::HostError;
  /// The message, without kind and position. Text quoted from the input is unchanged: it may
  /// contain line ends and control characters, have any length, and not be valid UTF-8.
  String text;
  /// The line and the column of the message, counted from 1. Columns count bytes. Both are 0 before
  /// the first token and when `hasPosition` is false.
  std::int32_t line = 0;
  std::int32_t column = 0;
  /// The byte offset of the invalid character from the start of the reading, for messages of the
  /// lexer; UNKNOWN_OFFSET for other messages, and for a String of more than 4 GiB.
  std::int64_t offset = UNKNOWN_OFFSET;
  /// For InvalidListToken, the name of the list that `kind()` contains, such as "PAREN". Empty for
  /// other messages.
  String list = {};
  /// The values that `text` contains, spelled as in `text`, in the order of the row's format. Set
  /// in the records that a sink receives and in a DiagnosticError.
  std::vector<String> arguments = {};

  /// The argument with that name, such as "expected". The row of the message lists the names. Empty
  /// if the message has no such argument.
  VSA_API String argument(std::string_view name) const;
  Severity severity() const noexcept { return rowOf(id).severity; }
  /// The stable name of the message, such as "too-few-elements".
  const char* name() const noexcept { return rowOf(id).name; }
  /// Whether the log line shows line and column.
  bool hasPosition() const noexcept { return *rowOf(id).kind != '\0'; }
  /// The label before the position, such as "PARSE ERROR" or "INVALID PAREN LIST TOKEN"; empty for
  /// messages that show no position.
  VSA_API String kind() const;
  /// The log line, such as "PARSE ERROR (4,9): invalid input array index: [x].".
  VSA_API String logLine() const;
};

/// Receives diagnostics when they are found, on the thread that parses. Exceptions of the sink are
/// handled like those of a log sink.
class VSA_API DiagnosticSink {
 public:
  virtual ~DiagnosticSink() = default;
  /// Called right before the line of the record is logged.
  virtual void report(const Diagnostic& diagnostic) = 0;
};

/// Installs a sink for the current thread. The destructor restores the previous sink. A null sink
/// disables reporting. Destroy the objects on the thread that created them, in reverse order of
/// creation.
class VSA_API ScopedDiagnosticSink {
 public:
  explicit ScopedDiagnosticSink(DiagnosticSink* sink) noexcept;
  ~ScopedDiagnosticSink();
  ScopedDiagnosticSink(const ScopedDiagnosticSink&) = delete;
  ScopedDiagnosticSink& operator=(const ScopedDiagnosticSink&) = delete;

 private:
  DiagnosticSink* previous_;
};

/// A fatal diagnostic as an exception. An entry point throws it for an invalid character in the
/// first three tokens. `what()` is the log line up to its first NUL.
class VSA_API DiagnosticError : public std::runtime_error {
 public:
  explicit DiagnosticError(const Diagnostic& diagnostic);
  DiagnosticError(const DiagnosticError&) = default;
  DiagnosticError& operator=(const DiagnosticError&) = default;
  ~DiagnosticError() override;

  const Diagnostic& diagnostic() const noexcept { return diagnostic_; }

 private:
  Diagnostic diagnostic_;
};

}  // namespace zn::korvo_sdk
