// Every text that the reader throws or logs, grouped by stage. Constants, so that the compiler
// checks the arguments of each. Internal; the door is vsa.h.
//
// Counts and indices are printed as 64-bit numbers: a text may name any.
#pragma once

namespace zn::korvo_sdk::impl {

// Characters to tokens.
inline constexpr char INVALID_TOKEN[] = "INVALID TOKEN (%d,%d): '%c'";
inline constexpr char INVALID_LIST_TOKEN[] = "INVALID %s LIST TOKEN (%d,%d): '%c'";
inline constexpr char UNEXPECTED_EOF[] = "UNEXPECTED EOF while parsing %s";

// The frames around a message: kind, line, column, message.
inline constexpr char POSITIONED[] = "%s (%d,%d): %s.";
inline constexpr char BAD_TOKEN[] = "BAD TOKEN (%d,%d): expected '%s', found '%s'.";
inline constexpr char TYPE_ERROR[] = "TYPE ERROR (%d,%d): %s.";
inline constexpr char TYPE_WARNING[] = "TYPE WARNING (%d,%d): %s.";
inline constexpr char ENUM_WARNING[] = "ENUM WARNING (%d,%d): %s.";

// Statements.
inline constexpr char UNRECOGNIZED_TOKEN[] = "unrecognized token '%s'.";
inline constexpr char BAD_VERSION[] = "Failed to parse VSA version comment: %s";

// Assignments and their input paths.
inline constexpr char WITH_NODE_NOT_SET[] = "'with' node not set (input: %s)";
inline constexpr char NODE_NOT_FOUND[] = "node '%s' not found ";  // the blank belongs to it
inline constexpr char INPUT_NOT_FOUND[] = "input '%s' not found.";
inline constexpr char INVALID_ARRAY_INDEX[] = "invalid input array index: %s";

// Types.
inline constexpr char CANNOT_ASSIGN_TYPE[] = "cannot assign %s%s to %s @ %s";
inline constexpr char NARROWING[] = "narrowing %s to %s @ %s";
inline constexpr char WRONG_TYPE[] = "expected %s @ %s but found %s";
inline constexpr char BAD_ENUM_VALUE[] = "setting non-existent enum value '%s' @ %s";

// Buffers.
inline constexpr char INVALID_ELEMENT_COUNT[] = "invalid buffer element count: %s";
inline constexpr char CANNOT_ALLOCATE[] = "cannot allocate %s%s";
inline constexpr char TOO_MANY_ELEMENTS[] = "Cannot add %s @ index %llu of %s[%llu].";
inline constexpr char TOO_FEW_ELEMENTS[] =
    "Too few elements (%llu) for %s[%llu] buffer, remainder set to zero.";
inline constexpr char UNREADABLE_BUFFER[] = "Failed to read '%s' buffer.";

// Links, resolved after the last statement.
inline constexpr char INVALID_OUTPUT[] = "Invalid output: %s.";
inline constexpr char NO_NODE_TO_CONNECT[] = "Cannot connect nonexistent node %s to %s.";
inline constexpr char NO_OUTPUT_TO_CONNECT[] = "Cannot connect nonexistent output %s to %s.";
inline constexpr char NO_NODE_TO_ASSIGN[] = "Cannot assign nonexistent node %s to %s.";

}  // namespace zn::korvo_sdk::impl
