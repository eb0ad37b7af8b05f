// TextWalk: returns the statements of a text one by one, each with the node that it concerns.
#pragma once

#include <string_view>

#include <vsa/outline.h>
#include <vsa/values/value_types.h>
#include "tools/vsa/check/rules/walk/statement_rule.h"

namespace vsa_tools {

class TextWalk {
 public:
  /// The text must not change.
  explicit TextWalk(std::string_view text) : reader_(text) {}

  /// Stores the next statement in `view`. Each call must pass the same `view`, because it must
  /// still contain the previous statement. Statements with wrong grammar are skipped. Returns false
  /// at the end of the text.
  bool next(StatementView& view);

 private:
  vsa::OutlineReader reader_;
  PathKey withKey_ = 0;
  std::size_t count_ = 0;
};

/// Returns whether a word is equal to `lower` if the case of letters is ignored.
bool isWord(std::string_view word, std::string_view lower);

/// Returns the element type for the keyword of a buffer, or Null for any other word.
vsa::ElementType elementTypeOf(std::string_view keyword);

}  // namespace vsa_tools
