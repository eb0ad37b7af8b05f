// Renames the nodes of a text.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include <vsa/syntax.h>
#include "tools/vsa/fmt/layout/text_layout.h"

namespace vsa_tools {

/// The new names of nodes by their former names.
using Renames = std::map<std::string, std::string, std::less<>>;

/// Passes the tokens of a text on to a layout, with the names of nodes replaced where they are
/// declared, removed, assigned to, referred to or connected to. A valid text is expected.
class NodeRenamer {
 public:
  /// Both must outlive the object.
  NodeRenamer(const Renames& renames, TextLayout& layout) : renames_(renames), layout_(layout) {}

  /// Processes the next token. EndOfText writes the remaining output.
  void put(const vsa::SyntaxToken& token);

 private:
  bool mayBeName(const vsa::SyntaxToken& word) const;
  bool isName(const vsa::SyntaxToken& next) const;
  void passOn(const vsa::SyntaxToken& token);
  void putWord(bool isName);

  const Renames& renames_;
  TextLayout& layout_;
  std::size_t index_ = 0;        // the index of the next token in its statement
  bool isValue_ = false;         // whether the next token is after the "="
  bool isFirstOfValue_ = false;  // whether the next token is the first one after the "="
  bool hasWord_ = false;         // whether the last token is a word that is not passed on yet
  vsa::SyntaxToken word_;
  std::string text_;       // the text of the word
  bool isSecond_ = false;  // whether the word is the second token of its statement
};

}  // namespace vsa_tools
