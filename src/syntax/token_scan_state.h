// Finds the end of a token in a text that arrives in blocks. Internal.
#pragma once

#include <cstdint>

#include <vsa/syntax.h>

namespace vsa::impl {

/// Knows where in a token the scan stands, so that it can continue in the next block.
class TokenScanState {
 public:
  /// Begins with the token that begins with `first`, which is no white space.
  void begin(char first) noexcept;

  /// Reads on from `at`; the first call from the byte after the first one. Returns `end` if the
  /// token is not over there; `isOver` tells. A byte 0xFF is not expected.
  const char* advance(const char* at, const char* end) noexcept;

  bool isOver() const noexcept { return isOver_; }
  /// The kind so far; final once the token is over.
  SyntaxKind kind() const noexcept { return kind_; }
  /// Whether the token may contain line feeds.
  bool mayHaveLineFeeds() const noexcept { return kind_ != SyntaxKind::Word && !isLine_; }
  /// The text ends here.
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
  bool isLine_ = false;            // the token ends with its line at the latest
  bool isAfterBackslash_ = false;  // in a string: the block ended with a backslash
  std::uint64_t depth_ = 0;        // in a list: open brackets of its kind
  char open_ = 0;
  char close_ = 0;
};

}  // namespace vsa::impl
