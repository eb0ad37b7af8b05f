#include "tools/vsa/fmt/comparison/same_tokens.h"

#include <algorithm>
#include <string_view>

#include "tools/vsa/fmt/comparison/same_numbers.h"

namespace vsa_tools {

// Reads tokens of the other text until there are bytes or numbers that are not consumed. Returns
// false at its end.
bool TokenComparison::fill() {
  while (expected_.isEmpty()) {
    if (expected_.isInPiece()) {
      expected_.endPiece();
    } else if (expectedIsEnded_) {
      return false;
    } else {
      expected_.beginPiece(nextExpected());
    }
  }
  return true;
}

vsa::SyntaxToken TokenComparison::nextExpected() {
  const vsa::SyntaxToken token = reader_.next();
  expectedIsEnded_ = token.kind == vsa::SyntaxKind::EndOfText;
  return token;
}

// Consumes bytes or numbers that are the same in `a` and `b`, which are not empty. Returns false if
// there is a difference.
bool TokenComparison::compare(TokenBytes& a, TokenBytes& b) {
  if (a.bytes().empty() && b.bytes().empty()) return takeSameNumbers(a.numbers(), b.numbers());
  a.moveNumbers(b.bytes().size());
  b.moveNumbers(a.bytes().size());
  const std::size_t count = std::min(a.bytes().size(), b.bytes().size());
  if (a.bytes().substr(0, count) != b.bytes().substr(0, count)) return false;
  a.take(count);
  b.take(count);
  return true;
}

// Returns whether the next token of the other text is `token`, and consumes it then. Most tokens
// are whole and have the same bytes. Copying them to TokenBytes took 1 s of processor time for 300
// MB of small nodes. The benchmark is the row "fmt -i changed, nodes" of `./dev bench --format`.
bool TokenComparison::isNext(const vsa::SyntaxToken& token) {
  const bool isAtBoundary = expected_.isEmpty() && !expected_.isInPiece() && !expectedIsEnded_;
  return isAtBoundary && reader_.skipIf(token);
}

void TokenComparison::compareAdded() {
  while (isSame_ && !added_.isEmpty()) isSame_ = fill() && compare(expected_, added_);
}

void TokenComparison::add(const vsa::SyntaxToken& token) {
  if (!isSame_ || isEnded_) return;
  isEnded_ = token.kind == vsa::SyntaxKind::EndOfText;
  if (isNext(token)) return;
  added_.beginPiece(token);
  compareAdded();
  if (!isSame_) return;
  added_.endPiece();
  compareAdded();
  if (isEnded_) isSame_ = isSame_ && !fill();
}

bool haveSameTokens(vsa::SyntaxReader& a, vsa::SyntaxReader& b) {
  TokenComparison comparison(a);
  while (!comparison.hasDifference() && !comparison.isSame()) comparison.add(b.next());
  return comparison.isSame();
}

}  // namespace vsa_tools
