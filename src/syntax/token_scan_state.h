// TokenScanState: finds the end of a token in a text that is read in blocks. Internal.
#pragma once

#include <cstdint>

#include <vsa/syntax.h>

namespace vsa::impl {

/// The state of scanning one token, which may continue in the next block.
class TokenScanState {
 public:
  /// Begins a token. `first` is its first character, which must not be white space.
  void begin(char first) noexcept;

  /// Scans the bytes from `at` up to, but not including, `end`. The first call begins at the second
  /// character of the token. Returns the end of the token. If the token may continue after `end`,
  /// returns `end`, and `isOver` then returns false. The bytes must not contain 0xFF.
  const char* advance(const char* at, const char* end) noexcept;

  bool isOver() const noexcept { return isOver_; }
  /// The kind of the token: Word also for `true`, `false` and `null`. It is final when the token is
  /// complete.
  SyntaxKind kind() const noexcept { return kind_; }
  bool mayHaveLineFeeds() const noexcept { return kind_ != SyntaxKind::Word && !isLine_; }
  /// Ends the token, because the text ends.
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
  bool isLine_ = false;            // whether this is a comment, a number or a single character
  bool isAfterBackslash_ = false;  // whether the last block ended with a backslash in a string
  std::uint64_t depth_ = 0;        // the number of open brackets of the list's kind after the first
  char open_ = 0;
  char close_ = 0;
};

}  // namespace vsa::impl
