// The table of diagnostics: one row for each message that the library logs or throws about a text.
//
//   X(name, id, severity, kind, position, format)
//
//   name      the enumerator of DiagnosticId
//   id        the stable name of the message, as docs/messages.md and tools use it
//   severity  a Severity; Fatal stops the parse
//   kind      the label before the position; empty for messages without a position
//   position  a PositionOf: which line and column the message has
//   format    the message without kind and position, a printf format; counts and
//             indices are printed as 64-bit numbers, since a text may contain any
//
// A new message needs a row here, a case in tests/cases and a paragraph in docs/messages.md. A test
// fails if one of them is missing.
#pragma once

#include <cstdint>

// One line per row, whatever its length.
// clang-format off
#define VSA_DIAGNOSTIC_TABLE(X) \
  /* Lexer: characters to tokens. */ \
  X(InvalidToken, "invalid-token", Fatal, "INVALID TOKEN", LastCharacter, "'%c'") \
  X(InvalidListToken, "invalid-list-token", Fatal, "INVALID %s LIST TOKEN", LastCharacter, "'%c'") \
  X(UnexpectedEof, "unexpected-eof", Error, "", LastCharacter, "UNEXPECTED EOF while parsing %s") \
  /* Parser: tokens to statements. */ \
  X(BadToken, "bad-token", Fatal, "BAD TOKEN", FoundToken, "expected '%s', found '%s'") \
  X(UnrecognizedToken, "unrecognized-token", Fatal, "PARSE ERROR", CurrentToken, "unrecognized token '%s'.") \
  X(BadVersion, "bad-version", Warning, "", CurrentToken, "Failed to parse VSA version comment: %s") \
  /* Assignments and their input paths. The trailing blank of NodeNotFound is intended. */ \
  X(WithNodeNotSet, "with-node-not-set", Fatal, "PARSE ERROR", CurrentToken, "'with' node not set (input: %s)") \
  X(NodeNotFound, "node-not-found", Fatal, "PARSE ERROR", CurrentToken, "node '%s' not found ") \
  X(InputNotFound, "input-not-found", Fatal, "PARSE ERROR", CurrentToken, "input '%s' not found.") \
  X(InvalidArrayIndex, "invalid-array-index", Fatal, "PARSE ERROR", CurrentToken, "invalid input array index: %s") \
  /* Types. */ \
  X(CannotAssignType, "cannot-assign-type", Fatal, "TYPE ERROR", CurrentToken, "cannot assign %s%s to %s @ %s") \
  X(Narrowing, "narrowing", Warning, "TYPE WARNING", CurrentToken, "narrowing %s to %s @ %s") \
  X(WrongType, "wrong-type", Error, "TYPE ERROR", CurrentToken, "expected %s @ %s but found %s") \
  X(BadEnumValue, "bad-enum-value", Warning, "ENUM WARNING", CurrentToken, "setting non-existent enum value '%s' @ %s") \
  /* Buffers. */ \
  X(InvalidElementCount, "invalid-element-count", Fatal, "PARSE ERROR", CurrentToken, "invalid buffer element count: %s") \
  X(CannotAllocate, "cannot-allocate", Fatal, "PARSE ERROR", CurrentToken, "cannot allocate %s%s") \
  X(TooManyElements, "too-many-elements", Fatal, "BUFFER ERROR", CurrentToken, "Cannot add %s @ index %llu of %s[%llu].") \
  X(TooFewElements, "too-few-elements", Warning, "", CurrentToken, "Too few elements (%llu) for %s[%llu] buffer, remainder set to zero.") \
  X(UnreadableBuffer, "unreadable-buffer", Fatal, "PARSE ERROR", CurrentToken, "Failed to read '%s' buffer.") \
  /* Compressed buffers. */ \
  X(CompressedDataEmpty, "compressed-data-empty", Fatal, "PARSE ERROR", CurrentToken, "compressed data is empty") \
  X(CompressedDataBadCharacter, "compressed-data-bad-character", Fatal, "PARSE ERROR", CurrentToken, "compressed data holds a character that is not a hexadecimal digit") \
  X(CompressedDataEndsEarly, "compressed-data-ends-early", Fatal, "PARSE ERROR", CurrentToken, "compressed data ends early") \
  X(CompressedDataCorrupt, "compressed-data-corrupt", Fatal, "PARSE ERROR", CurrentToken, "compressed data is corrupt") \
  X(CompressedDataWrongChecksum, "compressed-data-wrong-checksum", Fatal, "PARSE ERROR", CurrentToken, "compressed data fails its checksum") \
  X(CompressedDataTooLarge, "compressed-data-too-large", Fatal, "PARSE ERROR", CurrentToken, "compressed data is larger than the buffer") \
  /* Links, resolved after the last statement. */ \
  X(InvalidOutput, "invalid-output", Warning, "", None, "Invalid output: %s.") \
  X(NoNodeToConnect, "no-node-to-connect", Warning, "", None, "Cannot connect nonexistent node %s to %s.") \
  X(NoOutputToConnect, "no-output-to-connect", Warning, "", None, "Cannot connect nonexistent output %s to %s.") \
  X(NoNodeToAssign, "no-node-to-assign", Warning, "", None, "Cannot assign nonexistent node %s to %s.") \
  /* The library's own scene. */ \
  X(CannotAssignNode, "cannot-assign-node", Warning, "", None, "Cannot assign node %s to %s of type %s.") \
  X(TooManyEmptyElements, "too-many-empty-elements", Fatal, "", None, "array %s cannot grow past the scene's limit of %llu empty elements") \
  X(TooManyArrayElements, "too-many-array-elements", Fatal, "", None, "array %s cannot hold more than %llu elements") \
  X(NestedTooDeeply, "nested-too-deeply", Fatal, "", None, "input %s is nested deeper than %llu levels") \
  /* What a host's scene, source or log sink throws as std::runtime_error. */ \
  X(HostError, "host-error", Fatal, "", None, "%s")
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

/// How severe a problem is. A Warning does not change the result. An Error means that a value is
/// rejected or the text is cut off. A Fatal error stops the parse. The log shows Error and Fatal
/// both as errors.
enum class Severity : std::uint8_t { Warning, Error, Fatal };

/// Which line and column a message has.
enum class PositionOf : std::uint8_t {
  None,           ///< No position: links, which are resolved after the last statement; scenes.
  CurrentToken,   ///< The token consumed last; 0,0 before the first one.
  FoundToken,     ///< The token that the grammar does not allow.
  LastCharacter,  ///< The last character before the one that no token may contain.
};

/// One row of the table of diagnostics. All texts are NUL-terminated and never null.
struct DiagnosticRow {
  DiagnosticId id;
  const char* name;  ///< The stable name, in kebab case: "too-few-elements".
  Severity severity;
  const char* kind;  ///< "PARSE ERROR"; may contain one %s; empty without a position.
  PositionOf position;
  const char* format;  ///< The message, a printf format.
};

/// All rows; DiagnosticId is the index.
inline constexpr DiagnosticRow DIAGNOSTIC_ROWS[] = {
#define VSA_ROW(name, id, severity, kind, position, format) \
  {DiagnosticId::name, id, Severity::severity, kind, PositionOf::position, format},
    VSA_DIAGNOSTIC_TABLE(VSA_ROW)
#undef VSA_ROW
};

/// The row of a message.
constexpr const DiagnosticRow& rowOf(DiagnosticId id) {
  return DIAGNOSTIC_ROWS[static_cast<int>(id)];
}

}  // namespace zn::korvo_sdk
