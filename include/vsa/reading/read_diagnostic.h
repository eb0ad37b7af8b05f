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

/// Identifies a kind of problem. docs/messages.md describes each.
enum class DiagnosticId : std::uint8_t {
#define VSA_ROW(name, ...) name,
  VSA_DIAGNOSTIC_TABLE(VSA_ROW)
#undef VSA_ROW
      EndMark,  ///< A byte 0xFF ended the text before the end of its source.
  OverLimit,    ///< The text exceeds a limit of the options.
  HostMessage,  ///< The host's scene logged a message.
};

/// The number of ids.
inline constexpr int DIAGNOSTIC_ID_COUNT = static_cast<int>(DiagnosticId::HostMessage) + 1;

/// The stable name of an id in kebab case, such as "too-few-elements". Never null; "unknown" for a
/// value that is not in the enumeration.
VSA_API const char* name(DiagnosticId id) noexcept;

/// The names of the arguments of a message, in their order, separated by ", ": "expected, found"
/// for DiagnosticId::BadToken. Never null; empty if the message has none, and for a value that is
/// not in the enumeration. docs/messages.md says what each argument is.
VSA_API const char* argumentNames(DiagnosticId id) noexcept;

/// A Warning has no effect on the scene. An Error rejects a value or ends the reading.
enum class Severity : std::uint8_t { Warning, Error };

/// The name of a severity: "warning" or "error".
VSA_API const char* name(Severity severity) noexcept;

/// A problem in a text. A plain value that owns its texts.
struct Diagnostic {
  DiagnosticId id = DiagnosticId::HostError;
  Severity severity = Severity::Error;
  /// Whether the problem ended the reading.
  bool endedReading = false;
  /// The message without kind and position, byte for byte as the log has it. Text quoted from the
  /// input is unchanged: it may contain line feeds and control characters, have any length, and not
  /// be valid UTF-8.
  std::string message;
  /// The values that the message contains, in the order of `argumentNames(id)`, byte for byte as
  /// the message has them. Numbers are decimal.
  std::vector<std::string> arguments;
  /// The limit that the text exceeded. Set for DiagnosticId::OverLimit only.
  std::optional<Limit> limit;
  /// The label at the beginning of the log line, such as "PARSE ERROR"; empty if the line has no
  /// position.
  std::string kind;
  /// Line and column as the log line has them: those of the token at which the parser noticed the
  /// problem, which may be after `range`. Both are 0 before the first token and if the log line has
  /// no position.
  std::int32_t logLineNumber = 0;
  std::int32_t logColumn = 0;
  /// The path of the input concerned, beginning with the name of its node, such as
  /// "worktop.points[3]". Indices are spelled as in the text; a path with an invalid index ends
  /// before that index. Empty if no input is concerned.
  std::string inputPath;
  /// The bytes that caused the problem; an empty range where something is missing. If these bytes
  /// are not known, the last byte of the token at which the parser noticed the problem.
  TextRange range;
  /// If the problem is about one number of a list, the index of this number in the list, from 0.
  std::optional<std::uint64_t> numberIndex;

  /// The line that the plain interface logs: "PARSE ERROR (4,9): invalid input array index: [x].".
  /// Throws std::bad_alloc.
  VSA_API std::string logLine() const;
  /// The argument of that name, such as "expected"; valid as long as `arguments` is unchanged.
  /// Empty if the message has no such argument.
  VSA_API std::string_view argument(std::string_view name) const noexcept;
};

}  // namespace vsa
