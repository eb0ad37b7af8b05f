// Most texts are digits and nothing else, or have a blank once a line. So digits are taken four
// pairs a step as long as all eight characters are digits, and singly around anything else.

#include "foundation/compression/hex_text.h"

#include <array>

namespace zn {

namespace {

constexpr unsigned char WHITE_SPACE = 0x40;
constexpr unsigned char BAD = 0x80;
constexpr unsigned char NO_DIGIT = WHITE_SPACE | BAD;

// For each character the value of the digit, or one of the marks above.
constexpr std::array<unsigned char, 256> makeDigitValues() {
  std::array<unsigned char, 256> values{};
  values.fill(BAD);
  for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'}) {
    values[static_cast<unsigned char>(c)] = WHITE_SPACE;
  }
  for (unsigned char i = 0; i < 10; ++i) values['0' + i] = i;
  for (unsigned char i = 0; i < 6; ++i) {
    values['a' + i] = values['A' + i] = static_cast<unsigned char>(10 + i);
  }
  return values;
}

constexpr auto DIGIT_VALUES = makeDigitValues();

// Two digits as a byte, or, above 0xFF, a number that says that they are not two digits.
unsigned pairAt(const unsigned char* text) {
  const unsigned high = DIGIT_VALUES[text[0]];
  const unsigned low = DIGIT_VALUES[text[1]];
  return high << 4 | low | (low & NO_DIGIT) << 4;
}

}  // namespace

std::size_t HexFeed::next(const unsigned char*& bytes) {
  unsigned char* to = run_;
  while (to != run_ + RUN_BYTES && text_ != textEnd_ && !sawBadCharacter_) {
    if (!halfByte_) to = takePairs(to);
    if (to != run_ + RUN_BYTES && text_ != textEnd_) to = takeCharacter(to);
  }
  bytes = run_;
  return static_cast<std::size_t>(to - run_);
}

unsigned char* HexFeed::takePairs(unsigned char* to) {
  while (textEnd_ - text_ >= 8 && run_ + RUN_BYTES - to >= 4) {
    const unsigned first = pairAt(text_);
    const unsigned second = pairAt(text_ + 2);
    const unsigned third = pairAt(text_ + 4);
    const unsigned fourth = pairAt(text_ + 6);
    if ((first | second | third | fourth) > 0xFF) break;
    to[0] = static_cast<unsigned char>(first);
    to[1] = static_cast<unsigned char>(second);
    to[2] = static_cast<unsigned char>(third);
    to[3] = static_cast<unsigned char>(fourth);
    to += 4;
    text_ += 8;
    sawDigit_ = true;
  }
  return to;
}

unsigned char* HexFeed::takeCharacter(unsigned char* to) {
  const unsigned char value = DIGIT_VALUES[*text_++];
  if (value == WHITE_SPACE) return to;
  if (value == BAD) {
    sawBadCharacter_ = true;
    return to;
  }
  sawDigit_ = true;
  if (halfByte_) {
    *to++ = static_cast<unsigned char>(highDigit_ | value);
  } else {
    highDigit_ = static_cast<unsigned char>(value << 4);
  }
  halfByte_ = !halfByte_;
  return to;
}

void HexFeed::skipRest() {
  const unsigned char* bytes;
  while (next(bytes) > 0) {
  }
}

void writeHex(const unsigned char* data, std::size_t size, char* to) {
  constexpr char DIGITS[] = "0123456789abcdef";
  for (std::size_t i = 0; i < size; ++i) {
    *to++ = DIGITS[data[i] >> 4];
    *to++ = DIGITS[data[i] & 15];
  }
}

}  // namespace zn
