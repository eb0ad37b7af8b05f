// Finds the end of a token in a text that arrives in blocks. Internal.
#pragma once

#include <cstdint>

#include <vsa/syntax.h>

namespace vsa::impl {

/// The state of scanning one token. The token may continue in the next block.
class TokenScanState {
 public:
  /// Begins a token with its first character, which is not white space.
  void begin(char first) noexcept;

  /// Scans [at, end); the first call begins at the second character of the token. Returns the end
  /// of the token, or `end` if the token continues: see `isOver`. The bytes must not contain 0xFF.
  const char* advance(const char* at, const char* end) noexcept;

  bool isOver() const noexcept { return isOver_; }
  /// The kind so far; final once the token is over.
  SyntaxKind kind() const noexcept { return kind_; }
  /// Whether the token may contain line feeds.
  bool mayHaveLineFeeds() const noexcept { return kind_ != SyntaxKind::Word && !isLine_; }
  /// Ends the token at the end of the text.
  void endText() noexcept;

 private:
  const char* number(const char* at, const char* end) noexcept;
  const char* string(const char* at, const char* end) noexcept;
  const char* list(const char* at, const char* end) noexcept;
  const char* brackets(const char* at, const char* end) noexcept;
  const char* over(const char* at) noexcept {
    isOver_ = true;
    return at;
  }

  SyntaxKind kind_ = SyntaxKind::EndOfText;
  bool isOver_ = false;
  bool isLine_ = false;            // true if the token contains no line feed
  bool isAfterBackslash_ = false;  // true if the block ended with a backslash in a string
  std::uint64_t depth_ = 0;        // the number of open brackets of the list's kind
  char open_ = 0;
  char close_ = 0;
};

}  // namespace vsa::impl
