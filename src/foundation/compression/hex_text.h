// Bytes written as text, two hexadecimal digits each, high digit first.
#pragma once

#include <cstddef>

#include "foundation/compression/inflate.h"

namespace zn {

/// Turns the digits of a text into bytes, run by run, for the decoder to pull: there is never more
/// than one run of them. Digits may be in either case, and white space may stand between any two.
/// The text must outlive the feed.
class HexFeed final : public ByteFeed {
 public:
  /// Reads the `size` characters at `text`, all of them digits or white space.
  // cppcheck-suppress uninitMemberVar ; run_ is written before it is read, and clearing it costs
  HexFeed(const unsigned char* text, std::size_t size) : text_(text), textEnd_(text + size) {}

  /// The next run of whole bytes. The input ends with the text, or before its first bad character.
  std::size_t next(const unsigned char*& bytes) override;

  /// Reads what is left of the text, only to learn what the queries below tell.
  void skipRest();

  /// Of the text read so far: a character was neither digit nor white space,
  bool sawBadCharacter() const { return sawBadCharacter_; }
  /// there was a digit at all,
  bool sawDigit() const { return sawDigit_; }
  /// and the last byte lacks its second digit.
  bool halfByte() const { return halfByte_; }

 private:
  static constexpr std::size_t RUN_BYTES = 8192;

  unsigned char* takePairs(unsigned char* to);
  unsigned char* takeCharacter(unsigned char* to);

  const unsigned char* text_;
  const unsigned char* textEnd_;
  bool sawBadCharacter_ = false;
  bool sawDigit_ = false;
  bool halfByte_ = false;
  unsigned char highDigit_ = 0;  // when halfByte_, its first digit, in the upper four bits
  unsigned char run_[RUN_BYTES];
};

/// Writes the `size` bytes at `data` as 2 * `size` lower-case digits to `to`, without a NUL.
void writeHex(const unsigned char* data, std::size_t size, char* to);

}  // namespace zn
