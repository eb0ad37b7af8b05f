// TextWalk: the statements of a text with the node that each is about.
#pragma once

#include <optional>
#include <string_view>

#include <vsa/syntax.h>
#include <vsa/values/value_types.h>
#include "tools/vsa/check/rules/text/statement_rule.h"

namespace vsa_tools {

class TextWalk {
 public:
  /// The text must stay as it is.
  explicit TextWalk(std::string_view text) : reader_(text) {}

  /// The next statement, without malformed ones, as long as the next call is not made.
  std::optional<StatementView> next();

 private:
  vsa::StatementReader reader_;
  vsa::SyntaxStatement statement_;
  std::string_view withNode_;
  PathKey withKey_ = 0;
};

/// Whether a token is the word `lower` in any letter case.
bool isWord(const vsa::SyntaxToken& token, std::string_view lower);

/// The element type that a buffer's keyword names; Null for any other word.
vsa::ElementType elementTypeOf(const vsa::SyntaxToken& keyword);

/// The range of `bytes`, which are part of the text of `token`.
vsa::TextRange rangeIn(const vsa::SyntaxToken& token, std::string_view bytes);

}  // namespace vsa_tools
