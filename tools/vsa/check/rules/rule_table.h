// The table of the rules, one row for each: VSA_ROW(name, id, level, group, runs by default,
// purpose).
#pragma once

#include <cstdint>

// clang-format off
#define VSA_RULE_TABLE(VSA_ROW)                                                                            \
  VSA_ROW(EmptyFile, "empty-file", Warning, "encoding", true, "a file without a statement")                \
  VSA_ROW(CompressedFile, "compressed-file", Error, "encoding", true, "a compressed file")                 \
  VSA_ROW(Utf16, "utf-16", Error, "encoding", true, "a text in UTF-16 or UTF-32")                          \
  VSA_ROW(NulByte, "nul-byte", Error, "encoding", true, "a NUL byte, which ends what contains it")         \
  VSA_ROW(LoneCarriageReturn, "lone-carriage-return", Warning, "encoding", true,                           \
          "a carriage return that ends no line")                                                           \
  VSA_ROW(NotUtf8, "not-utf-8", Warning, "encoding", true, "bytes that are no UTF-8")                      \
  VSA_ROW(ObjectForList, "object-for-list", Warning, "values", true,                                       \
          "numbers in braces without a type, which make an empty object")                                  \
  VSA_ROW(DroppedComponents, "dropped-components", Warning, "values", true,                                \
          "more numbers than a vector, position, colour or matrix takes")                                  \
  VSA_ROW(DecimalComma, "decimal-comma", Warning, "values", true, "commas as decimal points in a list")    \
  VSA_ROW(GluedElements, "glued-elements", Warning, "values", true,                                        \
          "groups in brackets that run together to one number")                                            \
  VSA_ROW(EmptyComma, "empty-comma", Warning, "values", true, "a comma without a number before it")        \
  VSA_ROW(LostDigits, "lost-digits", Warning, "values", true, "a number with more digits than a float")   \
  VSA_ROW(NotFinite, "not-finite", Warning, "values", true, "infinite values and values that are no number") \
  VSA_ROW(ShortCompressedData, "short-compressed-data", Warning, "buffers", true,                          \
          "compressed data with fewer elements than the count")                                            \
  VSA_ROW(CompressedDataAsNumber, "compressed-data-as-number", Warning, "buffers", true,                   \
          "compressed data for a type that cannot be compressed")                                          \
  VSA_ROW(LargeDeclaredCount, "large-declared-count", Warning, "buffers", true,                            \
          "a count far larger than the list")                                                              \
  VSA_ROW(IndexBeyondPoints, "index-beyond-points", Warning, "buffers", true,                              \
          "an index of a mesh that none of its points has")                                                \
  VSA_ROW(UnknownEscape, "unknown-escape", Warning, "strings", true,                                       \
          "a backslash that begins no escape sequence")                                                    \
  VSA_ROW(EscapeInPath, "escape-in-path", Warning, "strings", true,                                        \
          "an escape sequence in what looks like the path of a file")                                      \
  VSA_ROW(StringForReference, "string-for-reference", Warning, "strings", true,                            \
          "a node's name in quotes where other nodes are referred to")                                     \
  VSA_ROW(NearVersion, "near-version", Warning, "comments", true, "a comment that is nearly a version")    \
  VSA_ROW(NearTime, "near-time", Warning, "comments", true, "a comment that is nearly a time")             \
  VSA_ROW(AccidentalTime, "accidental-time", Warning, "comments", true,                                    \
          "a comment that sets the time of the file by chance")                                            \
  VSA_ROW(UnknownIgnoredId, "unknown-ignored-id", Warning, "comments", true,                               \
          "a comment that ignores findings of an id that does not exist")                                  \
  VSA_ROW(PeriodBehindSemicolon, "period-behind-semicolon", Warning, "statements", true,                   \
          "an input that belongs to another node than the one declared before it")                         \
  VSA_ROW(RedeclaredType, "redeclared-type", Warning, "statements", true,                                  \
          "a second declaration of a node with another type")                                              \
  VSA_ROW(KeywordAsType, "keyword-as-type", Warning, "statements", true,                                   \
          "a misspelt keyword, or one with the wrong end, which declares a node")                          \
  VSA_ROW(WithUnknownNode, "with-unknown-node", Warning, "statements", true,                               \
          "a `with` whose node is misspelt or declared later")                                             \
  VSA_ROW(RemovedNode, "removed-node", Warning, "statements", true, "a value for a node that was removed") \
  VSA_ROW(EmptyLastBlock, "empty-last-block", Warning, "statements", true,                                 \
          "a text that ends behind the colon of a declaration")                                            \
  VSA_ROW(AssignedTwice, "assigned-twice", Warning, "statements", true, "two values for one input")        \
  VSA_ROW(SetAndConnected, "set-and-connected", Warning, "statements", false,                              \
          "an input with both a value and a connection")                                                   \
  VSA_ROW(HalfNamedElement, "half-named-element", Warning, "arrays", true,                                 \
          "members of one object that are spread over several elements")                                   \
  VSA_ROW(ArrayGap, "array-gap", Warning, "arrays", true, "elements of an array that get no value")        \
  VSA_ROW(SelfConnection, "self-connection", Warning, "links", true, "a node connected to itself")         \
  VSA_ROW(ConnectionCircle, "connection-circle", Warning, "links", true, "connections that form a circle") \
  VSA_ROW(ReferenceCircle, "reference-circle", Warning, "links", true,                                     \
          "references of inputs of one name that form a circle")                                           \
  VSA_ROW(NamesDifferByCase, "names-differ-by-case", Warning, "names", false,                              \
          "two nodes whose names differ by the case of letters only")                                      \
  VSA_ROW(SimilarNames, "similar-names", Warning, "names", false,                                          \
          "two nodes whose names differ by one letter")                                                    \
  VSA_ROW(UnusedNode, "unused-node", Warning, "names", false, "a node that no link names")                 \
  VSA_ROW(UnknownType, "unknown-type", Warning, "types", true, "a node of a type that is not described")   \
  VSA_ROW(UnknownInput, "unknown-input", Warning, "types", true, "an input that the type does not have")   \
  VSA_ROW(UnknownOutput, "unknown-output", Warning, "types", true, "an output that the type does not have") \
  VSA_ROW(UnknownEnumValue, "unknown-enum-value", Warning, "types", true,                                  \
          "a string that is none of the values of its input")                                              \
  VSA_ROW(WrongInputType, "wrong-input-type", Error, "types", true,                                        \
          "a value of another type than the input has")                                                    \
  VSA_ROW(OutOfRange, "out-of-range", Warning, "types", true, "a number out of the range of its input")    \
  VSA_ROW(MissingInput, "missing-input", Warning, "types", true, "a node without an input that it needs")
// clang-format on

namespace vsa_tools {

/// The number of a rule: its index in allRules().
enum class RuleId : std::uint8_t {
#define VSA_ROW(name, ...) name,
  VSA_RULE_TABLE(VSA_ROW)
#undef VSA_ROW
};

}  // namespace vsa_tools
