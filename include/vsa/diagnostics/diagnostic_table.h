// The table of diagnostics: one row for each message of the library about a text.
//
//   X(name, id, severity, kind, position, format, arguments)
//
//   name      the enumerator of DiagnosticId
//   id        the stable name of the message, as docs/messages.md and tools use it
//   severity  a Severity; Fatal stops the parse
//   kind      the label before the position; empty if the log line has no position
//   position  a PositionOf: which line and column the message has
//   format    the message without kind and position, a printf format; counts and
//             indices are printed as 64-bit numbers, because 32 bits are too few for them
//   arguments the names of the values that the format prints, in the order of the format,
//             separated by ", "; docs/messages.md says what each value is
//
// A new message needs a row here, a case in tests/cases (or a line in
// tests/cases/uncovered_messages.txt if no case can cause it) and a paragraph in docs/messages.md.
// A test fails if one of them is missing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Each row is one line of any length.
// clang-format off
#define VSA_DIAGNOSTIC_TABLE(X) \
  /* Lexer: characters to tokens. */ \
  X(InvalidToken, "invalid-token", Fatal, "INVALID TOKEN", LastCharacter, "'%c'", "character") \
  X(InvalidListToken, "invalid-list-token", Fatal, "INVALID %s LIST TOKEN", LastCharacter, "'%c'", "character") \
  X(UnexpectedEof, "unexpected-eof", Error, "", LastCharacter, "UNEXPECTED EOF while parsing %s", "what") \
  /* Parser: tokens to statements. */ \
  X(BadToken, "bad-token", Fatal, "BAD TOKEN", FoundToken, "expected '%s', found '%s'", "expected, found") \
  X(UnrecognizedToken, "unrecognized-token", Fatal, "PARSE ERROR", CurrentToken, "unrecognized token '%s'.", "token") \
  X(BadVersion, "bad-version", Warning, "", CurrentToken, "Failed to parse VSA version comment: %s", "comment") \
  /* Assignments and their input paths. The trailing blank of NodeNotFound is intended. */ \
  X(WithNodeNotSet, "with-node-not-set", Fatal, "PARSE ERROR", CurrentToken, "'with' node not set (input: %s)", "path") \
  X(NodeNotFound, "node-not-found", Fatal, "PARSE ERROR", CurrentToken, "node '%s' not found ", "path") \
  X(InputNotFound, "input-not-found", Fatal, "PARSE ERROR", CurrentToken, "input '%s' not found.", "path") \
  X(InvalidArrayIndex, "invalid-array-index", Fatal, "PARSE ERROR", CurrentToken, "invalid input array index: %s", "index") \
  /* Types. */ \
  X(CannotAssignType, "cannot-assign-type", Fatal, "TYPE ERROR", CurrentToken, "cannot assign %s%s to %s @ %s", "found, brackets, expected, input") \
  X(Narrowing, "narrowing", Warning, "TYPE WARNING", CurrentToken, "narrowing %s to %s @ %s", "found, expected, input") \
  X(WrongType, "wrong-type", Error, "TYPE ERROR", CurrentToken, "expected %s @ %s but found %s", "expected, input, found") \
  X(BadEnumValue, "bad-enum-value", Warning, "ENUM WARNING", CurrentToken, "setting non-existent enum value '%s' @ %s", "value, input") \
  /* Buffers. */ \
  X(InvalidElementCount, "invalid-element-count", Fatal, "PARSE ERROR", CurrentToken, "invalid buffer element count: %s", "count") \
  X(CannotAllocate, "cannot-allocate", Fatal, "PARSE ERROR", CurrentToken, "cannot allocate %s%s", "type, count") \
  X(TooManyElements, "too-many-elements", Fatal, "BUFFER ERROR", CurrentToken, "Cannot add %s @ index %llu of %s[%llu].", "number, index, type, count") \
  X(TooFewElements, "too-few-elements", Warning, "", CurrentToken, "Too few elements (%llu) for %s[%llu] buffer, remainder set to zero.", "written, type, count") \
  X(UnreadableBuffer, "unreadable-buffer", Fatal, "PARSE ERROR", CurrentToken, "Failed to read '%s' buffer.", "type") \
  /* Compressed buffers. */ \
  X(CompressedDataEmpty, "compressed-data-empty", Fatal, "PARSE ERROR", CurrentToken, "compressed data is empty", "") \
  X(CompressedDataBadCharacter, "compressed-data-bad-character", Fatal, "PARSE ERROR", CurrentToken, "compressed data holds a character that is not a hexadecimal digit", "") \
  X(CompressedDataEndsEarly, "compressed-data-ends-early", Fatal, "PARSE ERROR", CurrentToken, "compressed data ends early", "") \
  X(CompressedDataCorrupt, "compressed-data-corrupt", Fatal, "PARSE ERROR", CurrentToken, "compressed data is corrupt", "") \
  X(CompressedDataWrongChecksum, "compressed-data-wrong-checksum", Fatal, "PARSE ERROR", CurrentToken, "compressed data fails its checksum", "") \
  X(CompressedDataTooLarge, "compressed-data-too-large", Fatal, "PARSE ERROR", CurrentToken, "compressed data is larger than the buffer", "") \
  /* Links, resolved after the last statement. */ \
  X(InvalidOutput, "invalid-output", Warning, "", None, "Invalid output: %s.", "source") \
  X(NoNodeToConnect, "no-node-to-connect", Warning, "", None, "Cannot connect nonexistent node %s to %s.", "node, input") \
  X(NoOutputToConnect, "no-output-to-connect", Warning, "", None, "Cannot connect nonexistent output %s to %s.", "source, input") \
  X(NoNodeToAssign, "no-node-to-assign", Warning, "", None, "Cannot assign nonexistent node %s to %s.", "node, input") \
  /* The library's own scene. */ \
  X(CannotAssignNode, "cannot-assign-node", Warning, "", None, "Cannot assign node %s to %s of type %s.", "node, input, expected") \
  X(TooManyEmptyElements, "too-many-empty-elements", Fatal, "", None, "array %s cannot grow past the scene's limit of %llu empty elements", "array, maximum") \
  X(TooManyArrayElements, "too-many-array-elements", Fatal, "", None, "array %s cannot hold more than %llu elements", "array, maximum") \
  X(NestedTooDeeply, "nested-too-deeply", Fatal, "", None, "input %s is nested deeper than %llu levels", "input, maximum") \
  /* What a host's scene, source or log sink throws as std::runtime_error. */ \
  X(HostError, "host-error", Fatal, "", None, "%s", "message")
// clang-format on

namespace zn::korvo_sdk {

/// Identifies a message: a row of the table of diagnostics.
enum class DiagnosticId : std::uint8_t {
#define VSA_ROW(name, ...) name,
  VSA_DIAGNOSTIC_TABLE(VSA_ROW)
#undef VSA_ROW
};

/// The number of messages.
inline constexpr int DIAGNOSTIC_COUNT = 0
#define VSA_ROW(...) +1
    VSA_DIAGNOSTIC_TABLE(VSA_ROW)
#undef VSA_ROW
    ;

/// The severity of a problem. A Fatal error stops the parse. An Error means that a value is
/// rejected or that the text is cut off. Any other problem is a Warning, for example a value that
/// was converted with a loss, or a link that was not made. The log marks both Error and Fatal as
/// errors.
enum class Severity : std::uint8_t { Warning, Error, Fatal };

/// The token or character that gives a message its line and column.
enum class PositionOf : std::uint8_t {
  None,           ///< No position. The message is about a link, the scene or the host.
  CurrentToken,   ///< The token that the parser consumed last. Line and column are 0 before the
                  ///< first token.
  FoundToken,     ///< The token that the grammar does not allow.
  LastCharacter,  ///< The last character that the lexer consumed before the problem.
};

/// One row of the table of diagnostics. All texts are NUL-terminated and never null.
struct DiagnosticRow {
  /// The identifier of the message.
  DiagnosticId id;
  const char* name;  ///< The stable name in kebab case, such as "too-few-elements".
  /// The severity of the message.
  Severity severity;
  /// The label before the position, such as "PARSE ERROR". It may contain one %s. It is empty if
  /// the log line has no position.
  const char* kind;
  /// The token or character whose position the message has.
  PositionOf position;
  const char* format;  ///< The message without kind and position, as a printf format.
  /// The names of the values that `format` prints, in the order of the format: "expected, found".
  const char* arguments;
};

/// All rows. The index of a row is the value of its DiagnosticId.
inline constexpr DiagnosticRow DIAGNOSTIC_ROWS[] = {
#define VSA_ROW(name, id, severity, kind, position, format, arguments) \
  {DiagnosticId::name, id, Severity::severity, kind, PositionOf::position, format, arguments},
    VSA_DIAGNOSTIC_TABLE(VSA_ROW)
#undef VSA_ROW
};

/// Returns the row of a message.
constexpr const DiagnosticRow& rowOf(DiagnosticId id) {
  return DIAGNOSTIC_ROWS[static_cast<int>(id)];
}

/// The result of `argumentIndex` if no argument has the name.
inline constexpr int NO_ARGUMENT = -1;

/// Returns the number of names in a list such as "expected, found".
constexpr int argumentCount(std::string_view names) {
  int count = names.empty() ? 0 : 1;
  for (const char c : names) count += c == ',' ? 1 : 0;
  return count;
}

/// Returns the index of `name` in a list such as "expected, found", or NO_ARGUMENT.
constexpr int argumentIndex(std::string_view names, std::string_view name) {
  constexpr std::string_view SEPARATOR = ", ";
  for (int index = 0;; ++index) {
    const std::size_t end = names.find(SEPARATOR);
    if (names.substr(0, end) == name) return name.empty() ? NO_ARGUMENT : index;
    if (end == std::string_view::npos) return NO_ARGUMENT;
    names.remove_prefix(end + SEPARATOR.size());
  }
}

namespace diagnostic_detail {

/// Whether the format of each row prints as many values as the row has names. The number of values
/// is the number of "%", because no format contains "%%".
constexpr bool formatsFitArguments() {
  for (const DiagnosticRow& row : DIAGNOSTIC_ROWS) {
    int conversions = 0;
    for (const char c : std::string_view(row.format)) conversions += c == '%' ? 1 : 0;
    if (conversions != argumentCount(row.arguments)) return false;
  }
  return true;
}

static_assert(formatsFitArguments(), "a row has more or fewer names than its format prints values");

}  // namespace diagnostic_detail

}  // namespace zn::korvo_sdk
