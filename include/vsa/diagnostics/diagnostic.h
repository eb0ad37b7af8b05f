// Diagnostics as data. A record is made where a problem is found; the line of the log is made from
// the record. A program that wants more than the line installs a DiagnosticSink.
#pragma once

#include <cstdint>
#include <stdexcept>

#include <vsa/diagnostics/diagnostic_table.h>
#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {

/// A problem of a text. A plain value.
struct Diagnostic {
  /// "No such offset."
  static constexpr std::int64_t UNKNOWN_OFFSET = -1;

  DiagnosticId id = DiagnosticId::HostError;
  /// The message, without kind and position. Quoted parts are as they were read: with line ends and
  /// control characters, of any length, not always UTF-8.
  String text;
  /// Lines and columns in bytes, from 1, 0 before the first token; 0 where `hasPosition` is false.
  std::int32_t line = 0;
  std::int32_t column = 0;
  /// The offset in bytes of the character that no token may contain, from the beginning of the
  /// reading; for the messages of the lexer. UNKNOWN_OFFSET for every other message, and behind
  /// 4 GiB of a String.
  std::int64_t offset = UNKNOWN_OFFSET;
  /// InvalidListToken: the list's name in its kind, "PAREN" say. Empty for every other message.
  String list = {};

  Severity severity() const noexcept { return rowOf(id).severity; }
  /// The stable name of the message, such as "too-few-elements".
  const char* name() const noexcept { return rowOf(id).name; }
  /// Whether the log line shows line and column.
  bool hasPosition() const noexcept { return *rowOf(id).kind != '\0'; }
  /// "PARSE ERROR", "INVALID PAREN LIST TOKEN"; empty for messages that show no position.
  VSA_API String kind() const;
  /// The line as the log has it: "PARSE ERROR (4,9): invalid input array index: [x].".
  VSA_API String logLine() const;
};

/// Takes diagnostics as they are found, on the thread that reads. What it throws goes through the
/// reader as what a log sink throws does.
class VSA_API DiagnosticSink {
 public:
  virtual ~DiagnosticSink() = default;
  /// Called right before the line of the record is logged.
  virtual void report(const Diagnostic& diagnostic) = 0;
};

/// The sink of this thread for as long as the object lives; the one before comes back with its end.
/// Null reports to nobody. Made and destroyed on one thread, in reverse order of making.
class VSA_API ScopedDiagnosticSink {
 public:
  explicit ScopedDiagnosticSink(DiagnosticSink* sink) noexcept;
  ~ScopedDiagnosticSink();
  ScopedDiagnosticSink(const ScopedDiagnosticSink&) = delete;
  ScopedDiagnosticSink& operator=(const ScopedDiagnosticSink&) = delete;

 private:
  DiagnosticSink* before_;
};

/// A fatal diagnostic on its way: what an entry point throws for a bad character in the first three
/// tokens. `what()` is the log line up to the first NUL in it.
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
