// Returns the names of the kinds of tokens and statements.
#include <vsa/syntax.h>

namespace vsa {

const char* name(SyntaxKind kind) noexcept {
  switch (kind) {
    case SyntaxKind::EndOfText:
      return "end-of-text";
    case SyntaxKind::Invalid:
      return "invalid";
    case SyntaxKind::Unterminated:
      return "unterminated";
    case SyntaxKind::Word:
      return "word";
    case SyntaxKind::True:
      return "true";
    case SyntaxKind::False:
      return "false";
    case SyntaxKind::Null:
      return "null";
    case SyntaxKind::Integer:
      return "integer";
    case SyntaxKind::Real:
      return "real";
    case SyntaxKind::String:
      return "string";
    case SyntaxKind::Comment:
      return "comment";
    case SyntaxKind::Parens:
      return "parens";
    case SyntaxKind::Braces:
      return "braces";
    case SyntaxKind::Brackets:
      return "brackets";
    case SyntaxKind::Punctuation:
      return "punctuation";
  }
  return "unknown";
}

const char* name(StatementKind kind) noexcept {
  switch (kind) {
    case StatementKind::Comment:
      return "comment";
    case StatementKind::Declaration:
      return "declaration";
    case StatementKind::Block:
      return "block";
    case StatementKind::Remove:
      return "remove";
    case StatementKind::Define:
      return "define";
    case StatementKind::Assignment:
      return "assignment";
    case StatementKind::Connection:
      return "connection";
    case StatementKind::Malformed:
      return "malformed";
  }
  return "unknown";
}

}  // namespace vsa
