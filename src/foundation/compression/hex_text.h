// Converts between bytes and hexadecimal text. Each byte is two digits, the high digit first.
// Internal.
#pragma once

#include <cstddef>

#include "foundation/compression/compressed_text.h"
#include "foundation/compression/inflate.h"

namespace zn {

/// Converts the digits of a text to the bytes that inflateStream() reads. Converts one run of at
/// most 8 KiB of bytes at a time, so that only this run is in memory. Digits may be in upper or
/// lower case. White space may be before, between and after the digits. The text must outlive the
/// feed.
class HexFeed final : public ByteFeed {
 public:
  /// Creates a feed for the `size` characters at `text`.
  // cppcheck-suppress uninitMemberVar ; run_ is written before it is read, and clearing it takes
  // time
  HexFeed(const unsigned char* text, std::size_t size) : text_(text), textEnd_(text + size) {}

  /// Sets the observer, which may be null. Each call of next() calls the observer before it
  /// converts a run, also if no run is left. An exception of the observer ends next().
  void setObserver(RunObserver* observer) { observer_ = observer; }

  /// Sets `bytes` to the next run of complete bytes and returns its size. Returns 0 at the end of
  /// the input. The input ends at the end of the text, or before the first character that is
  /// neither a digit nor white space.
  std::size_t next(const unsigned char*& bytes) override;

  /// Reads the rest of the text, but stops after a character that is neither a digit nor white
  /// space. Then the functions below apply to the text up to there.
  void skipRest();

  // The following functions describe the text that has been read.

  /// Whether the text contains a character that is neither a digit nor white space.
  bool hasBadCharacter() const { return hasBadCharacter_; }
  /// Whether the text contains a digit.
  bool hasDigit() const { return hasDigit_; }
  /// Whether the second digit of the last byte is missing.
  bool hasHalfByte() const { return hasHalfByte_; }

 private:
  static constexpr std::size_t RUN_BYTES = 8192;

  unsigned char* readPairs(unsigned char* to);
  unsigned char* readCharacter(unsigned char* to);

  RunObserver* observer_ = nullptr;
  const unsigned char* text_;
  const unsigned char* textEnd_;
  bool hasBadCharacter_ = false;
  bool hasDigit_ = false;
  bool hasHalfByte_ = false;
  // The first digit of an incomplete byte, in the upper four bits.
  unsigned char highDigit_ = 0;
  unsigned char run_[RUN_BYTES];
};

/// Writes the `size` bytes at `data` to `to` as 2 * `size` digits in lower case. Does not write a
/// NUL.
void writeHex(const unsigned char* data, std::size_t size, char* to);

}  // namespace zn
