// Finds the source range of a diagnostic: the bytes that caused the problem. Internal.
//
// The parser detects most problems at the token that it consumed last. This token is often after
// the range, sometimes on another line. A rule for each kind of problem finds the range among the
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
  /// The index of a number in its list, if the range is that number.
  std::optional<std::uint64_t> numberIndex = std::nullopt;
};

/// A problem whose range is to be found.
struct Problem {
  /// The diagnostic. Its id, arguments, limit and input path are set.
  const Diagnostic& diagnostic;
  /// The offset after the token at which the parser detected the problem. This token is the one
  /// that the parser consumed last, or the one that the grammar does not allow. There are two
  /// exceptions. For an invalid character, it is the offset after this character. If the problem
  /// was detected while a link was resolved, it is the start of the statement.
  std::uint64_t noticed;
  /// The offset of the invalid character. Only problems of the lexer have one.
  std::optional<std::uint64_t> character;
  /// Whether the token of a BadToken is the end of the text, or a string or list that is cut off.
  bool isAtEnd = false;
};

/// Returns the range of a problem. Returns std::nullopt if the tokens do not have the expected
/// form, or if no single part of the text causes the problem.
std::optional<SourceRange> findSourceRange(const Problem& problem, const StatementTokens& tokens);

/// Returns the left-hand side of the last statement in `tokens`. Returns an empty string if that
/// statement is not an assignment. If the path begins with ".", the function puts the name of the
/// node before it. This is the node that the tokens declare. If they declare none, the name is
/// `withNode`. If a list of the path contains an invalid character, the result ends before that
/// list.
std::string pathAsWritten(const StatementTokens& tokens, std::string_view withNode);

}  // namespace vsa
