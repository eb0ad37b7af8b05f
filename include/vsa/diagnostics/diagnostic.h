// Diagnostics as data: a record for each problem in a text. The log line of a problem is formatted
// from its record. A host that installs a DiagnosticSink receives the records.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <vsa/diagnostics/diagnostic_table.h>
#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// A problem in a text. It is a plain value.
struct Diagnostic {
  /// The value of `offset` if the offset is not known.
  static constexpr std::int64_t UNKNOWN_OFFSET = -1;

  /// The id of the message.
  DiagnosticId id = DiagnosticId::HostError;
  /// The message without its kind and position. It can contain parts of the text that is read.
  /// These parts are not escaped: they may contain line ends and control characters, may have any
  /// length, and may be invalid UTF-8.
  String text;
  /// The position of the message: line and column, both counted from 1. Columns count bytes.
  /// `PositionOf` says to what they belong. Both numbers are 0 for PositionOf::None, and for
  /// PositionOf::CurrentToken before the first token. For PositionOf::LastCharacter before the
  /// first character, the line is 1 and the column is 0.
  std::int32_t line = 0;
  std::int32_t column = 0;
  /// The byte offset of the invalid character from the start of the reading. Only InvalidToken and
  /// InvalidListToken have an offset. For all other messages, and for a String of 4 GiB or more, it
  /// is UNKNOWN_OFFSET.
  std::int64_t offset = UNKNOWN_OFFSET;
  /// The name of the list that `kind()` contains, such as "PAREN". Only InvalidListToken has one.
  /// For all other messages it is empty.
  String list = {};
  /// The values that `text` contains, in the order of the row's format and with the same spelling
  /// as in `text`. They are set in a record that a sink receives and in the record of a
  /// DiagnosticError.
  std::vector<String> arguments = {};

  /// Returns the argument with this name, such as "expected". The names are in the message's row of
  /// the table. Returns an empty text if the message has no such argument.
  VSA_API String argument(std::string_view name) const;
  /// The severity of the message.
  Severity severity() const noexcept { return rowOf(id).severity; }
  /// The stable name of the message, such as "too-few-elements".
  const char* name() const noexcept { return rowOf(id).name; }
  /// Whether the log line contains a line and a column.
  bool hasPosition() const noexcept { return *rowOf(id).kind != '\0'; }
  /// The label before the position, such as "PARSE ERROR" or "INVALID PAREN LIST TOKEN". It is
  /// empty if the log line has no position.
  VSA_API String kind() const;
  /// The log line, such as "PARSE ERROR (4,9): invalid input array index: [].".
  VSA_API String logLine() const;
};

/// Receives each diagnostic of the plain interface when it is found, on the thread that parses the
/// text. The reading functions of namespace vsa have ReadOptions::onDiagnostic instead. An
/// exception that this sink throws has the same effect as an exception of a LogSink.
class VSA_API DiagnosticSink {
 public:
  virtual ~DiagnosticSink() = default;
  /// Called before the line of this record is logged.
  virtual void report(const Diagnostic& diagnostic) = 0;
};

/// Sets the diagnostic sink of the current thread. A null sink disables the reports. The destructor
/// restores the previous sink. Destroy such objects on the thread that created them, in reverse
/// order of their creation.
class VSA_API ScopedDiagnosticSink {
 public:
  explicit ScopedDiagnosticSink(DiagnosticSink* sink) noexcept;
  ~ScopedDiagnosticSink();
  ScopedDiagnosticSink(const ScopedDiagnosticSink&) = delete;
  ScopedDiagnosticSink& operator=(const ScopedDiagnosticSink&) = delete;

 private:
  DiagnosticSink* previous_;
};

/// The exception for a fatal diagnostic. parseString and parseVsa throw it if one of the first
/// three tokens contains an invalid character. The reading functions of namespace vsa do not throw
/// it. `what()` is the log line up to its first NUL.
class VSA_API DiagnosticError : public std::runtime_error {
 public:
  explicit DiagnosticError(const Diagnostic& diagnostic);
  DiagnosticError(const DiagnosticError&) = default;
  DiagnosticError& operator=(const DiagnosticError&) = default;
  ~DiagnosticError() override;

  /// The record of the problem.
  const Diagnostic& diagnostic() const noexcept { return diagnostic_; }

 private:
  Diagnostic diagnostic_;
};

}  // namespace zn::korvo_sdk
