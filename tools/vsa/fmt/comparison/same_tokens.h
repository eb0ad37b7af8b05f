// TokenComparison: compares the tokens of two texts.
#pragma once

#include <vsa/syntax.h>
#include "tools/vsa/fmt/comparison/token_bytes.h"

namespace vsa_tools {

/// Compares the tokens of a text with those of another text, which it reads itself. The white space
/// in lists is not compared.
class TokenComparison {
 public:
  /// `expected` reads the other text. It must outlive the object.
  explicit TokenComparison(vsa::SyntaxReader& expected) : reader_(expected) {}

  /// Compares the next token or piece of the text. The last token is EndOfText, and further ones
  /// are ignored. Throws what the source of the other text throws.
  void add(const vsa::SyntaxToken& token);
  /// Whether a token differs. Further tokens are ignored then.
  bool hasDifference() const { return !isSame_; }
  /// Whether both texts have the same tokens from the beginning to the end.
  bool isSame() const { return isSame_ && isEnded_; }

 private:
  static bool compare(TokenBytes& a, TokenBytes& b);
  bool fill();
  vsa::SyntaxToken nextExpected();
  bool isNext(const vsa::SyntaxToken& token);
  void compareAdded();

  vsa::SyntaxReader& reader_;
  TokenBytes expected_;  // the tokens of the other text that are read but not compared
  bool expectedIsEnded_ = false;
  TokenBytes added_;  // the tokens of the text that are added but not compared
  bool isEnded_ = false;
  bool isSame_ = true;
};

/// Returns whether both texts have the same tokens. Reads both texts to their ends or to the first
/// difference. Throws what the sources throw.
bool haveSameTokens(vsa::SyntaxReader& a, vsa::SyntaxReader& b);

}  // namespace vsa_tools
