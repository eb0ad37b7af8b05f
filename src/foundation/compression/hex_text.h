// Converts between bytes and text. A byte is written as two hexadecimal digits, the high one first.
// Internal.
#pragma once

#include <cstddef>

#include "foundation/compression/compressed_text.h"
#include "foundation/compression/inflate.h"

namespace zn {

/// Converts the digits of a text to bytes for the decoder, one run at a time, so that only one run
/// is in memory. Digits may be in either case, and white space is allowed between any two. The text
/// must outlive the feed.
class HexFeed final : public ByteFeed {
 public:
  /// Reads the `size` characters at `text`, all of them digits or white space.
  // cppcheck-suppress uninitMemberVar ; run_ is written before it is read, and clearing it takes
  // time
  HexFeed(const unsigned char* text, std::size_t size) : text_(text), textEnd_(text + size) {}

  /// The observer is called before each run of at most 8 KiB of the stream. It may be null. next()
  /// throws what the observer throws.
  void setObserver(RunObserver* observer) { observer_ = observer; }

  /// The next run of whole bytes. The input ends with the text, or before its first bad character.
  std::size_t next(const unsigned char*& bytes) override;

  /// Reads the rest of the text, so that the queries below apply to the whole text.
  void skipRest();

  // Queries about the text read so far.

  /// Whether a character was neither digit nor white space.
  bool hasBadCharacter() const { return hasBadCharacter_; }
  /// Whether there was a digit.
  bool hasDigit() const { return hasDigit_; }
  /// Whether the last byte lacks its second digit.
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
  unsigned char highDigit_ = 0;  // the first digit of an incomplete byte, in the upper four bits
  unsigned char run_[RUN_BYTES];
};

/// Writes the `size` bytes at `data` as 2 * `size` lower-case digits to `to`, without a NUL.
void writeHex(const unsigned char* data, std::size_t size, char* to);

}  // namespace zn
