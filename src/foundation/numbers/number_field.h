// Converts one plain number or plain field of a list, on any processor. Internal.
//
// Each step converts up to eight digits in a 64-bit word. The lowest byte of the word is the first
// character. The sums that combine eight digits are those of "Faster integer parsing" (J. Khuong
// and others, 2018).
//
// A plain number is [-]digits, for a real also with ["." digits] and [("e" | "E") ["+" | "-"]
// digits]. The digits on one side of the period may be missing. A plain field is a plain number and
// a blank. readReal, readInteger, readPlain and readField set `out` and return the end of the
// number, or the position of the ninth digit of its exponent. They return null and do not change
// `out` if no plain number begins at `at`, if it is out of range or has more than MAX_DIGITS digits
// before the exponent, or if number_decimal cannot determine its rounding. Only readField checks
// what follows the number. A function may read up to FIELD_WINDOW bytes from `at` on.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "foundation/base/load_word.h"
#include "foundation/base/sanitizers.h"
#include "foundation/numbers/number_decimal.h"

namespace zn::numbers {

/// The maximum number of bytes that a function may read from the start of a field.
inline constexpr size_t FIELD_WINDOW = 48;

inline constexpr uint64_t POWERS_OF_TEN[9] = {1,      10,      100,      1000,     10000,
                                              100000, 1000000, 10000000, 100000000};

/// Loads eight characters. Each character is combined with '0' by an exclusive or, which converts a
/// digit to its value. The first character is in the lowest byte.
inline uint64_t loadEight(const char* at) {
  return detail::loadLittleEndian(at) ^ 0x3030303030303030;
}

/// Returns the number of digits at the start of the word. The value of a digit is less than 10. The
/// sum sets the highest bit of each byte from 10 to 127, because 0x76 + 10 is 0x80. Larger bytes
/// already have that bit.
inline int leadingDigits(uint64_t word) {
  const uint64_t past = ((word & 0x7F7F7F7F7F7F7F7F) + 0x7676767676767676) | word;
  return std::countr_zero(past & 0x8080808080808080) / 8;
}

/// Returns the value of the first `count` digits of the word. `count` must be from 1 to 8. First
/// combines the digits to four pairs. The constants of the products contain the weights of the
/// pairs: 10^6 and 100 for the first and the third pair, 10^4 and 1 for the second and the fourth.
VSA_WRAPS_AROUND inline uint64_t foldDigits(uint64_t word, int count) {
  constexpr uint64_t PAIRS = 0x000000FF000000FF;
  word <<= 64 - 8 * count;
  word = word * 10 + (word >> 8);
  return ((word & PAIRS) * 0x000F424000000064 + ((word >> 16) & PAIRS) * 0x0000271000000001) >> 32;
}

/// A sequence of digits as a number. The value is valid for up to MAX_DIGITS digits.
struct DigitRun {
  uint64_t value = 0;
  int count = 0;

  /// Appends the digits at `at` to the run and returns their end. If the run would then have more
  /// than MAX_DIGITS digits, sets `count` to a number above MAX_DIGITS, does not add the last
  /// digits to `value`, and returns a position before their end.
  const char* read(const char* at) {
    for (;;) {
      const uint64_t word = loadEight(at);
      const int digits = leadingDigits(word);
      count += digits;
      if (digits == 0 || count > MAX_DIGITS) return at;
      value = value * POWERS_OF_TEN[digits] + foldDigits(word, digits);
      at += digits;
      if (digits < 8) return at;
    }
  }
};

/// Reads ("e" | "E") ["+" | "-"] digits. `at` is the position of the letter. Adds the exponent to
/// `exponent`. Reads up to eight digits. Returns the end of these digits, or null if there is no
/// digit.
inline const char* readExponent(const char* at, int64_t& exponent) {
  ++at;
  const bool negative = *at == '-';
  if (negative || *at == '+') ++at;
  const uint64_t word = loadEight(at);
  const int digits = leadingDigits(word);
  if (digits == 0) return nullptr;
  const auto written = static_cast<int64_t>(foldDigits(word, digits));
  exponent += negative ? -written : written;
  return at + digits;
}

template <class Real>
inline const char* readReal(const char* at, Real& out) {
  const bool negative = *at == '-';
  at += negative ? 1 : 0;
  DigitRun digits;
  at = digits.read(at);
  int64_t exponent = 0;
  if (*at == '.') {
    const int whole = digits.count;
    at = digits.read(at + 1);
    exponent = whole - digits.count;
  }
  if (digits.count == 0 || digits.count > MAX_DIGITS) return nullptr;
  if (*at == 'e' || *at == 'E') at = readExponent(at, exponent);
  Real value;
  if (at == nullptr || !realFromDecimal(digits.value, exponent, value)) return nullptr;
  out = withSign(value, negative);
  return at;
}

/// Sets `out` to `magnitude` with the sign. Returns false if the number is out of range, if it is
/// -2^63, or if the type is unsigned and the number has a "-". `out` then has no meaning.
template <class Integer>
inline bool signedInteger(uint64_t magnitude, bool negative, Integer& out) {
  constexpr auto MAX = static_cast<uint64_t>(std::numeric_limits<Integer>::max());
  if constexpr (std::is_unsigned_v<Integer>) {
    out = static_cast<Integer>(magnitude);
    return !negative && magnitude <= MAX;
  } else {
    // Without the mask, the negation below would overflow for 2^63. The mask does not change an
    // accepted number, because the comparison below rejects larger magnitudes. The comparison also
    // rejects -2^63, which number_text then converts.
    const auto value = static_cast<int64_t>(magnitude & (~uint64_t{0} >> 1));
    // All ones for a negative number. This avoids a branch on the sign.
    const int64_t flip = -int64_t{negative};
    out = static_cast<Integer>((value ^ flip) - flip);
    return magnitude <= MAX + (negative && sizeof(Integer) < 8 ? 1 : 0);
  }
}

template <class Integer>
inline const char* readInteger(const char* at, Integer& out) {
  const bool negative = *at == '-';
  at += negative ? 1 : 0;
  DigitRun digits;
  at = digits.read(at);
  if (digits.count == 0 || digits.count > MAX_DIGITS) return nullptr;
  Integer value;
  if (!signedInteger(digits.value, negative, value)) return nullptr;
  out = value;
  return at;
}

/// Reads a plain number of the type.
template <class Number>
inline const char* readPlain(const char* at, Number& out) {
  if constexpr (std::is_floating_point_v<Number>) {
    return readReal(at, out);
  } else {
    return readInteger(at, out);
  }
}

/// Reads a plain field of the type.
template <class Number>
inline const char* readField(const char* at, Number& out) {
  Number value;
  const char* const end = readPlain(at, value);
  if (end == nullptr || *end != ' ') return nullptr;
  out = value;
  return end;
}

}  // namespace zn::numbers
