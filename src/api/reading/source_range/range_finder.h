// Finds the source range of a diagnostic: the bytes to which the diagnostic refers. Internal.
//
// The parser notices a problem at the token that it consumed last, which is often after the range
// and sometimes on another line. The rule for the kind of the problem finds the range among the
// tokens of the statement.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "api/reading/source_range/statement_tokens.h"

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/reading/read_diagnostic.h>

namespace vsa {

/// The bytes from `begin` up to, but not including, `end`. Both are offsets in the text.
struct SourceRange {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
  /// Set if the range is a number of a list.
  std::optional<std::uint64_t> numberIndex = std::nullopt;
};

/// What is known about a problem, besides its statement.
struct Problem {
  /// The diagnostic, in which id, arguments, limit and input path are set.
  const Diagnostic& diagnostic;
  /// The end of the token at which the parser noticed the problem: the token consumed last, or the
  /// token that the grammar does not allow.
  std::uint64_t noticed;
  /// The offset of the invalid character, if there is one.
  std::optional<std::uint64_t> character;
  /// BadToken: the token found is the end of the text, or a string or list that is cut off.
  bool isAtEnd = false;
};

/// Finds the range. Returns nothing if the tokens do not have the form that the problem implies.
std::optional<SourceRange> findSourceRange(const Problem& problem, const StatementTokens& tokens);

/// The left-hand side of the last statement of `tokens`; empty if that statement is not an
/// assignment. A path that begins with "." is returned with the name of its node: the node that the
/// tokens declare, or otherwise `withNode`. A path ends before an invalid character.
std::string pathAsWritten(const StatementTokens& tokens, std::string_view withNode);

}  // namespace vsa
