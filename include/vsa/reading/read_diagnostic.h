// vsa::Diagnostic: a problem that a reading found, as a record.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/diagnostics/diagnostic_table.h>
#include <vsa/foundation/api.h>
#include <vsa/reading/read_status.h>
#include <vsa/reading/text_position.h>

namespace vsa {

/// Identifies a kind of problem. docs/messages.md describes each kind.
enum class DiagnosticId : std::uint8_t {
#define VSA_ROW(name, ...) name,
  VSA_DIAGNOSTIC_TABLE(VSA_ROW)
#undef VSA_ROW
      EndMark,  ///< A byte 0xFF ended the text before the end of its source.
  OverLimit,    ///< The text exceeds a limit of the options.
  HostMessage,  ///< The host's scene logged a message.
};

/// The number of enumerators of DiagnosticId.
inline constexpr int DIAGNOSTIC_ID_COUNT = static_cast<int>(DiagnosticId::HostMessage) + 1;

/// Returns the stable name of an id in kebab case, such as "too-few-elements". Returns "unknown"
/// for any other number. The result is never null.
VSA_API const char* name(DiagnosticId id) noexcept;

/// Returns the names of the arguments of a message, in the order of the message and separated by ",
/// ". For DiagnosticId::BadToken they are "expected, found". Returns an empty text if the message
/// has no arguments or `id` is no DiagnosticId. The result is never null. docs/messages.md
/// describes each argument.
VSA_API const char* argumentNames(DiagnosticId id) noexcept;

/// The severity of a problem. An Error rejects a value or ends the reading. Any other problem is a
/// Warning, for example a value that was converted with a loss, or a link that was not made. The
/// severity of a HostMessage is that of the logged message.
enum class Severity : std::uint8_t { Warning, Error };

/// Returns the name of a severity: "warning" or "error". Returns "unknown" for any other number.
VSA_API const char* name(Severity severity) noexcept;

/// A problem in a text. It is a plain value that owns its texts.
struct Diagnostic {
  /// The kind of the problem.
  DiagnosticId id = DiagnosticId::HostError;
  /// The severity of the problem.
  Severity severity = Severity::Error;
  /// Whether the problem ended the reading.
  bool endedReading = false;
  /// The message without kind and position, with the same bytes as in the log line. A message can
  /// contain parts of the text that was read. These parts are not escaped: they may contain line
  /// feeds and control characters, may have any length, and may be invalid UTF-8.
  std::string message;
  /// The values that the message contains, in the order of `argumentNames(id)`. They have the same
  /// bytes as in the message. Numbers are decimal.
  std::vector<std::string> arguments;
  /// The limit that the text exceeded. It is set only for DiagnosticId::OverLimit.
  std::optional<Limit> limit;
  /// The label at the beginning of the log line, such as "PARSE ERROR". It is empty if the log line
  /// has no position.
  std::string kind;
  /// The line and the column in the log line. Usually they are the position of the token at which
  /// the parser detected the problem, or 0 and 0 if there is no token yet. For an invalid
  /// character, they are the position of the character before it, or line 1 and column 0 if it is
  /// the first one of the text. Both are 0 if the log line has no position. This position can be
  /// after `range`.
  std::int32_t logLineNumber = 0;
  std::int32_t logColumn = 0;
  /// The path of the input with the problem, such as "worktop.points[3]". It begins with the name
  /// of the node. Its indices are decimal numbers, or have the spelling of the text, such as "[*]".
  /// If a character of an index is invalid, the path ends before the index. A path that
  /// IInput::path of a host's scene returns can have another form. The path is empty if the problem
  /// concerns no input.
  std::string inputPath;
  /// The bytes that caused the problem. If something is missing in the text, the range is empty. If
  /// the bytes are not known, the range is the last byte of the token at which the parser detected
  /// the problem. If the problem is found before the parse begins, such as a file that is too long,
  /// the range is empty and at the beginning of the text.
  TextRange range;
  /// If the problem concerns one number of a list: the index of this number in the list, from 0.
  std::optional<std::uint64_t> numberIndex;

  /// Returns the line that the plain interface logs, such as "PARSE ERROR (4,9): invalid input
  /// array index: [].". Returns the message for a problem that the plain interface does not log.
  /// Throws std::bad_alloc.
  VSA_API std::string logLine() const;
  /// Returns the argument with this name, such as "expected". The view is valid as long as
  /// `arguments` does not change. Returns an empty text if the message has no such argument.
  VSA_API std::string_view argument(std::string_view name) const noexcept;
};

}  // namespace vsa
