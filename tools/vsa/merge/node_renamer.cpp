#include "tools/vsa/merge/node_renamer.h"

#include "tools/vsa/fmt/layout/text_layout.h"

namespace vsa_tools {

using vsa::SyntaxKind;
using vsa::SyntaxToken;

namespace {

// Receives the tokens of a text, replaces the names of nodes, and writes the tokens to a layout.
class NodeRenamer {
 public:
  // `renames` and `layout` must outlive the object.
  NodeRenamer(const Renames& renames, TextLayout& layout) : renames_(renames), layout_(layout) {}

  // Processes the next token. Does not write EndOfText, but the word before it.
  void put(const SyntaxToken& token);

 private:
  bool mayBeName(const SyntaxToken& word) const;
  bool isName(const SyntaxToken& next) const;
  void putWord(bool isName);

  const Renames& renames_;
  TextLayout& layout_;
  std::size_t index_ = 0;        // the index of the next token in its statement
  bool isValue_ = false;         // whether the next token is after the "="
  bool isFirstOfValue_ = false;  // whether the next token is the first one after the "="
  bool hasWord_ = false;         // whether the last token is a word that is not written yet
  SyntaxToken word_;
  std::string text_;       // the text of that word
  bool isSecond_ = false;  // whether that word is the second token of its statement
};

// Returns whether a word may be the name of a node. Names are the first word of a statement or of a
// value, and the second word of a declaration or directive: "sphere ball;", "remove ball;".
bool NodeRenamer::mayBeName(const SyntaxToken& word) const {
  if (word.kind != SyntaxKind::Word || !word.isFirst || !word.isLast) return false;
  return index_ == 0 || isFirstOfValue_ || (index_ == 1 && hasWord_);
}

// Returns whether the word before `next` is the name of a node. The first word of a statement may
// also be a type, and the first word of a value may be the keyword of a list. `next` shows which it
// is.
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

}  // namespace

bool writeRenamed(vsa::SyntaxReader& reader, const Renames& renames, vsa::Sink& sink) {
  TextLayout layout(sink);
  NodeRenamer renamer(renames, layout);
  vsa::SyntaxToken token;
  do {
    token = reader.next();
    renamer.put(token);
  } while (token.kind != vsa::SyntaxKind::EndOfText);
  layout.put(token);
  return layout.flush();
}

}  // namespace vsa_tools
