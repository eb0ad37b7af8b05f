// TokenBytes: the tokens of a text in a form in which they are compared.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <vsa/syntax.h>

namespace vsa_tools {

/// The tokens of a text as bytes: the text of each token, a NUL, and the kind. The text of a list
/// is its elements, each after a blank. The numbers in the middle of a long list are not copied:
/// they stay in the text until they are compared.
class TokenBytes {
 public:
  /// Adds a token or a piece of one, up to the end of its numbers. When the numbers are consumed,
  /// call endPiece() to add what follows them. Until then, the text of the token must not change.
  void beginPiece(const vsa::SyntaxToken& token);
  void endPiece();
  /// Whether endPiece() must be called before the next piece is added.
  bool isInPiece() const { return isInPiece_; }

  /// The bytes that are not consumed yet.
  std::string_view bytes() const { return std::string_view(bytes_).substr(taken_); }
  /// Consumes bytes. If there are no others, their memory is used again.
  void take(std::size_t count);

  /// The numbers that follow bytes() in the text of the piece: what is left of the result of
  /// plainNumbers(). If bytes() is empty, the caller may consume numbers: it removes them from the
  /// beginning of the view.
  std::string_view& numbers() { return numbers_; }
  /// If there are no bytes, moves numbers to the bytes until there are `size` bytes.
  void moveNumbers(std::size_t size);

  bool isEmpty() const { return bytes_.empty() && numbers_.empty(); }

 private:
  void appendParts(std::string_view text);

  vsa::ListReader list_;
  bool isList_ = false;
  vsa::SyntaxKind listKind_ = vsa::SyntaxKind::Parens;
  bool isInPiece_ = false;
  vsa::SyntaxToken piece_;    // the last piece, without the text that was added
  std::string_view numbers_;  // the numbers before the text of the piece
  std::string bytes_;         // the bytes before the numbers
  std::size_t taken_ = 0;     // how many of the bytes are consumed
};

}  // namespace vsa_tools
