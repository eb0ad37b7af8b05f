// The bytes of a statement that a diagnostic is about. Internal.
//
// The parser notices a mistake at the token that it consumed last, which is often behind the
// mistake and sometimes on another line. From the kind of the mistake and the tokens of the
// statement follows which bytes to blame: a rule for each kind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "api/reading/culprit/statement_tokens.h"

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/reading/read_diagnostic.h>

namespace vsa {

struct Culprit {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
  std::optional<std::uint64_t> numberIndex = std::nullopt;
};

/// What is known of a mistake besides its statement.
struct Mistake {
  DiagnosticId id;
  std::string_view message;
  /// The end of the token that the parser noticed it at: the one consumed last, or the one that the
  /// grammar does not allow.
  std::uint64_t noticed;
  /// The path of the input concerned, or empty.
  std::string_view inputPath;
  /// The invalid character, if there is one.
  std::optional<std::uint64_t> character;
};

/// Nothing if the tokens do not have the form that the mistake implies.
std::optional<Culprit> findCulprit(const Mistake& mistake, const StatementTokens& tokens);

/// The path that the last assignment among the tokens begins with; empty if they end with something
/// else. A path that begins with "." gets the name of the node that the tokens declare, or else
/// `withNode`. Of a path with an invalid character, what stands before it.
std::string pathAsWritten(const StatementTokens& tokens, std::string_view withNode);

}  // namespace vsa
