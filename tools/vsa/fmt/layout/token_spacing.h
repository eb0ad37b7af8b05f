// Functions that decide where the canonical layout has a blank between two tokens.
#pragma once

#include <vsa/syntax.h>

namespace vsa_tools {

/// Returns whether the token is a list, in which white space is not kept.
inline bool isList(vsa::SyntaxKind kind) {
  return kind == vsa::SyntaxKind::Parens || kind == vsa::SyntaxKind::Braces;
}

/// Returns whether tokens of this kind are words, numbers, strings or comments. There is a blank
/// between two of them, because most of them would be one token without it.
inline bool isWordLike(vsa::SyntaxKind kind) {
  return kind >= vsa::SyntaxKind::Word && kind <= vsa::SyntaxKind::Comment;
}

/// Returns whether there is a blank between `token` and the token before it, which has the kind
/// `last`. If that token is punctuation, `lastChar` is its character.
inline bool needsBlank(vsa::SyntaxKind last, char lastChar, const vsa::SyntaxToken& token) {
  if (token.kind == vsa::SyntaxKind::Punctuation) {
    const char c = token.text.front();
    return c == '=' ? lastChar != '|' : c == '|' || lastChar == '=';
  }
  if (lastChar == '=') return true;
  if (token.kind == vsa::SyntaxKind::Braces) return last == vsa::SyntaxKind::Brackets;
  return isWordLike(token.kind) && isWordLike(last);
}

}  // namespace vsa_tools
