// Functions that recognise types in declarations that were probably meant as the keywords `with`,
// `remove` and `define`.
#pragma once

#include <optional>
#include <string_view>

#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/rules/walk/statement_rule.h"

namespace vsa_tools {

/// Returns whether the word is `with`, `remove` or `define`, in any letter case.
bool isKeyword(std::string_view word);

/// Returns the keyword that was probably intended instead of the type in a declaration of a node
/// that already exists. The type may be misspelt in any way, or be a word such as `delete`.
std::optional<Suggestion> keywordForKnownNode(const StatementView& view);

/// Returns the keyword that was probably intended instead of `type`, or an empty text if there is
/// none. The node is new, so the type may well be intended. Therefore it must be a keyword in which
/// two neighbours are swapped, or one letter is missing or doubled: "remote" and "width" are types.
std::string_view keywordForNewNode(std::string_view type);

}  // namespace vsa_tools
