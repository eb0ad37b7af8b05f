// TextLayout: writes a text in the canonical layout, which docs/formatting.md describes.
#pragma once

#include <cstddef>
#include <string>

#include <vsa/syntax.h>
#include "tools/vsa/fmt/layout/list_layout.h"
#include "tools/vsa/fmt/layout/output_buffer.h"

namespace vsa_tools {

/// Writes the tokens of a text unchanged, with the white space of the canonical layout between them
/// and inside lists.
class TextLayout {
 public:
  explicit TextLayout(vsa::Sink& sink) : out_(sink), list_(out_) {}

  /// Writes the next token, or the next piece of a token. EndOfText ends the text.
  void put(const vsa::SyntaxToken& token);
  /// Writes the remaining text. Returns false if this or an earlier write has failed.
  bool flush() { return out_.flush(); }

 private:
  void beginToken(const vsa::SyntaxToken& token);
  void beginStatement(const vsa::SyntaxToken& token);
  void putText(const vsa::SyntaxToken& token);
  void putList(const vsa::SyntaxToken& token);
  bool putPlainList(const vsa::SyntaxToken& token);
  void putElements(std::string_view text);
  ListShape shape(vsa::SyntaxKind kind) const;
  void endToken(const vsa::SyntaxToken& token);

  OutputBuffer out_;
  ListLayout list_;
  vsa::ListReader elements_;
  std::size_t indent_ = 0;      // the indentation of the statement
  bool isInStatement_ = false;  // whether a token of the current statement was written
  bool isInBlock_ = false;      // whether the last statement begins or continues a block
  bool isEmpty_ = true;         // whether nothing has been written
  vsa::SyntaxKind last_ = vsa::SyntaxKind::EndOfText;  // the kind of the last token
  char lastChar_ = 0;                                  // the last token if it is punctuation
  std::string word_;                                   // the last word, which may be a keyword
  bool hasIndex_ = false;                              // whether brackets follow that word
};

/// Formats a text. Returns false if the sink has failed. Throws what the source of the reader
/// throws.
bool formatText(vsa::SyntaxReader& reader, vsa::Sink& sink);

}  // namespace vsa_tools
