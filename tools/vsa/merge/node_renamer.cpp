#include "tools/vsa/merge/node_renamer.h"

namespace vsa_tools {

using vsa::SyntaxKind;
using vsa::SyntaxToken;

// A node is named by the first word of a statement or of a value, or by the second word of a
// declaration or directive: "sphere ball;", "remove ball;".
bool NodeRenamer::mayBeName(const SyntaxToken& word) const {
  if (word.kind != SyntaxKind::Word || !word.isFirst || !word.isLast) return false;
  return index_ == 0 || isFirstOfValue_ || (index_ == 1 && hasWord_);
}

// The token after the word determines whether the word is a name: the first word of a statement may
// also be a type, and the first word of a value may be the keyword of a list.
bool NodeRenamer::isName(const SyntaxToken& next) const {
  if (isSecond_) return true;
  return next.is('.') || (isValue_ && next.is(';'));
}

void NodeRenamer::putWord(bool isName) {
  hasWord_ = false;
  word_.text = text_;
  if (isName) {
    const auto renamed = renames_.find(text_);
    if (renamed != renames_.end()) word_.text = renamed->second;
  }
  layout_.put(word_);
}

void NodeRenamer::put(const SyntaxToken& token) {
  const bool isWord = mayBeName(token);
  const bool isSecond = index_ == 1 && hasWord_;
  if (hasWord_) putWord(isName(token));
  if (token.kind == SyntaxKind::EndOfText) return;
  if (isWord) {
    hasWord_ = true;
    isSecond_ = isSecond;
    word_ = token;
    text_ = token.text;
  } else {
    layout_.put(token);
  }
  if (!token.isLast) return;
  isFirstOfValue_ = token.is('=');
  isValue_ = isValue_ || isFirstOfValue_;
  ++index_;
  const bool isEnd = token.is(';') || token.is(':') || token.kind == SyntaxKind::Comment;
  if (!isEnd) return;
  index_ = 0;
  isValue_ = false;
}

}  // namespace vsa_tools
