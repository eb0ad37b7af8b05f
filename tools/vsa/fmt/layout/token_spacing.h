// Kinds of tokens, and where the canonical layout has a blank between two of them.
#pragma once

#include <vsa/syntax.h>

namespace vsa_tools {

/// Whether the token is a list: the white space in it is not kept.
inline bool isList(vsa::SyntaxKind kind) {
  return kind == vsa::SyntaxKind::Parens || kind == vsa::SyntaxKind::Braces;
}

/// Whether two neighbouring tokens of such kinds need a blank between them, because they would
/// merge without it.
inline bool isWordLike(vsa::SyntaxKind kind) {
  return kind >= vsa::SyntaxKind::Word && kind <= vsa::SyntaxKind::Comment;
}

/// Whether a blank separates `token` from the token before it, of kind `last`. `lastChar` is that
/// token, if it is punctuation.
inline bool needsBlank(vsa::SyntaxKind last, char lastChar, const vsa::SyntaxToken& token) {
  if (token.is('=')) return lastChar != '|';
  if (token.is('|') || lastChar == '=') return true;
  if (token.kind == vsa::SyntaxKind::Braces) return last == vsa::SyntaxKind::Brackets;
  return isWordLike(token.kind) && isWordLike(last);
}

}  // namespace vsa_tools
