#include "tools/vsa/fmt/comparison/same_tokens.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "tools/vsa/fmt/comparison/same_numbers.h"
#include "tools/vsa/fmt/layout/plain_numbers.h"
#include "tools/vsa/fmt/layout/token_spacing.h"

namespace vsa_tools {

namespace {

/// The tokens of a text as bytes: the text of each token, a NUL, and the kind. The text of a list
/// is its elements, each after a blank. The numbers in the middle of a long list are not copied:
/// they stay in the text until they are compared.
class TokenBytes {
 public:
  explicit TokenBytes(vsa::SyntaxReader& reader) : reader_(reader) {}

  /// Reads tokens if all bytes and numbers are consumed. Returns false at the end of the text.
  bool fill() {
    constexpr std::size_t BLOCK_BYTES = 64 << 10;
    if (!bytes().empty()) return true;
    bytes_.clear();
    taken_ = 0;
    while (numbers_.empty() && bytes_.size() < BLOCK_BYTES && (isInPiece_ || !isEnded_)) {
      if (isInPiece_) {
        endPiece();
      } else {
        beginPiece(reader_.next());
      }
    }
    return !bytes_.empty() || !numbers_.empty();
  }
  /// The bytes that are not consumed yet.
  std::string_view bytes() const { return std::string_view(bytes_).substr(taken_); }
  void take(std::size_t count) { taken_ += count; }

  /// The numbers after the bytes, as in the result of plainNumbers(). The caller consumes numbers
  /// by removing them from the view, but only if there are no bytes.
  std::string_view& numbers() { return numbers_; }
  /// If there are no bytes, moves numbers to the bytes until there are `size` bytes.
  void moveNumbers(std::size_t size) {
    if (!bytes().empty()) return;
    bytes_.clear();
    taken_ = 0;
    while (!numbers_.empty() && bytes_.size() < size) {
      (bytes_ += ' ') += takeNumber(numbers_);
    }
  }

 private:
  void beginPiece(const vsa::SyntaxToken& token) {
    isEnded_ = token.kind == vsa::SyntaxKind::EndOfText;
    isInPiece_ = true;
    piece_ = token;
    if (token.isFirst) {
      isList_ = isList(token.kind);
      if (isList_) list_ = vsa::ListReader();
      listKind_ = token.kind;
    }
    if (!isList_) return;
    const bool isTuple = listKind_ == vsa::SyntaxKind::Parens;
    numbers_ = plainNumbers(piece_.text, isTuple ? '(' : '{', isTuple ? ')' : '}');
    if (numbers_.empty()) return;
    const auto begin = static_cast<std::size_t>(numbers_.data() - piece_.text.data());
    appendParts(piece_.text.substr(0, begin));
    piece_.text.remove_prefix(begin + numbers_.size());
  }

  // Appends what follows the numbers of the piece.
  void endPiece() {
    isInPiece_ = false;
    if (isList_) {
      appendParts(piece_.text);
    } else {
      bytes_ += piece_.text;
    }
    if (!piece_.isLast) return;
    if (isList_ && list_.endsInBlank()) bytes_ += ' ';
    bytes_ += '\0';
    bytes_ += static_cast<char>(piece_.kind);
  }

  void appendParts(std::string_view text) {
    list_.add(text);
    for (vsa::ListPart part; list_.next(part);) {
      if (!part.continues) bytes_ += ' ';
      bytes_ += part.text;
    }
  }

  vsa::SyntaxReader& reader_;
  vsa::ListReader list_;
  bool isList_ = false;
  vsa::SyntaxKind listKind_ = vsa::SyntaxKind::Parens;
  bool isEnded_ = false;
  bool isInPiece_ = false;    // whether `piece_` is not consumed yet
  vsa::SyntaxToken piece_;    // the last piece, without the text that was consumed
  std::string_view numbers_;  // the numbers before the text of the piece
  std::string bytes_;         // the bytes before the numbers
  std::size_t taken_ = 0;
};

}  // namespace

bool haveSameTokens(vsa::SyntaxReader& a, vsa::SyntaxReader& b) {
  TokenBytes left(a), right(b);
  while (true) {
    const bool hasLeft = left.fill(), hasRight = right.fill();
    if (!hasLeft || !hasRight) return hasLeft == hasRight;
    if (left.bytes().empty() && right.bytes().empty()) {
      if (!takeSameNumbers(left.numbers(), right.numbers())) return false;
      continue;
    }
    left.moveNumbers(right.bytes().size());
    right.moveNumbers(left.bytes().size());
    const std::size_t count = std::min(left.bytes().size(), right.bytes().size());
    if (left.bytes().substr(0, count) != right.bytes().substr(0, count)) return false;
    left.take(count);
    right.take(count);
  }
}

}  // namespace vsa_tools
