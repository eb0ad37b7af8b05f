// Returns the names of the kinds of tokens and statements.
#include <cstddef>
#include <iterator>

#include <vsa/syntax.h>

namespace vsa {

namespace {

// The index of a name is the value of its kind.
constexpr const char* TOKEN_NAMES[] = {"end-of-text", "invalid",  "unterminated", "word",
                                       "true",        "false",    "null",         "integer",
                                       "real",        "string",   "comment",      "parens",
                                       "braces",      "brackets", "punctuation"};
constexpr const char* STATEMENT_NAMES[] = {"comment", "declaration", "block",      "remove",
                                           "define",  "assignment",  "connection", "malformed"};

static_assert(std::size(TOKEN_NAMES) == static_cast<std::size_t>(SyntaxKind::Punctuation) + 1);
static_assert(std::size(STATEMENT_NAMES) == static_cast<std::size_t>(StatementKind::Malformed) + 1);

}  // namespace

const char* name(SyntaxKind kind) noexcept {
  const auto index = static_cast<std::size_t>(kind);
  return index < std::size(TOKEN_NAMES) ? TOKEN_NAMES[index] : "unknown";
}

const char* name(StatementKind kind) noexcept {
  const auto index = static_cast<std::size_t>(kind);
  return index < std::size(STATEMENT_NAMES) ? STATEMENT_NAMES[index] : "unknown";
}

}  // namespace vsa
