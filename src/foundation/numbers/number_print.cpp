#include "foundation/numbers/number_print.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

#include "foundation/base/sanitizers.h"
#include "foundation/numbers/shortest_decimal.h"

namespace zn::numbers {

namespace {

constexpr std::uint32_t TEN_TO_8 = 100'000'000;
constexpr std::uint64_t ASCII_ZEROS = 0x3030303030303030;

/// The eight decimal digits of a number below 10^8, a digit a byte, the first one lowest. Halves
/// the number three times, all parts of a step in one multiplication.
std::uint64_t eightDigits(std::uint32_t number) {
  const std::uint64_t upper = number / 10000;
  const std::uint64_t fours = upper | (number - upper * 10000) << 32;
  const std::uint64_t hundreds = ((fours * 10486) >> 20) & 0x0000007F0000007F;
  const std::uint64_t twos = hundreds | (fours - hundreds * 100) << 16;
  const std::uint64_t tens = ((twos * 103) >> 10) & 0x000F000F000F000F;
  return tens | (twos - tens * 10) << 8;
}

void storeWord(char* to, std::uint64_t word) {
  if constexpr (std::endian::native == std::endian::big) {
    for (int i = 0; i < 8; ++i) to[i] = static_cast<char>(word >> (8 * i));
  } else {
    std::memcpy(to, &word, sizeof word);
  }
}

/// Up to 17 significant digits: the first one, and two words of eight that follow it.
struct Digits {
  std::uint64_t first;     // a digit's value
  std::uint64_t words[2];  // digits' values, the first one lowest
  int count;               // without zeros at the end
  int total;               // with them

  /// Drops the zeros before the first digit; not all digits are zero.
  VSA_WRAPS_AROUND void stripFront() {
    while (first == 0 && words[0] == 0) {
      words[0] = words[1];
      words[1] = 0;
      total -= 8;
    }
    if (first != 0) return;
    const int zeros = std::countr_zero(words[0]) / 8;
    const int shift = 8 * zeros;
    first = (words[0] >> shift) & 0xFF;
    const int gone = shift + 8;
    if (gone < 64) {
      words[0] = (words[0] >> gone) | (words[1] << (64 - gone));
      words[1] >>= gone;
    } else {
      words[0] = words[1];
      words[1] = 0;
    }
    total -= zeros + 1;
  }

  void countDigits() {
    const std::uint64_t last = words[1] != 0 ? words[1] : words[0];
    const int used = last == 0 ? 0 : 8 - std::countl_zero(last) / 8;
    count = 1 + used + (words[1] != 0 ? 8 : 0);
  }

  char* store(char* to) const {
    to[0] = static_cast<char>('0' + first);
    storeWord(to + 1, words[0] | ASCII_ZEROS);
    storeWord(to + 9, words[1] | ASCII_ZEROS);
    return to + count;
  }
};

Digits digitsOf(std::uint32_t number) {
  const std::uint32_t upper = number / TEN_TO_8;
  Digits digits{upper, {eightDigits(number - upper * TEN_TO_8), 0}, 0, 9};
  digits.stripFront();
  digits.countDigits();
  return digits;
}

Digits digitsOf(std::uint64_t number) {
  if (number < TEN_TO_8 * 10) return digitsOf(static_cast<std::uint32_t>(number));
  const std::uint64_t upper = number / TEN_TO_8;
  const auto lower = static_cast<std::uint32_t>(number - upper * TEN_TO_8);
  const auto first = static_cast<std::uint32_t>(upper / TEN_TO_8);
  const auto middle = static_cast<std::uint32_t>(upper - std::uint64_t{first} * TEN_TO_8);
  Digits digits{first, {eightDigits(middle), eightDigits(lower)}, 0, 17};
  digits.stripFront();
  digits.countDigits();
  return digits;
}

// d.ddde-x
char* putWithExponent(char* to, const Digits& digits, int exponent) {
  const char* const end = digits.store(to + 1);
  to[0] = to[1];
  to[1] = '.';
  char* at = digits.count > 1 ? to + (end - to) : to + 1;
  *at++ = 'e';
  return std::to_chars(at, at + 5, exponent).ptr;
}

// 0.000ddd
char* putFraction(char* to, const Digits& digits, int zeros) {
  std::memcpy(to, "0.000000", 8);
  return digits.store(to + 2 + zeros);
}

// ddd000
char* putInteger(char* to, const Digits& digits, int point) {
  std::memset(digits.store(to), '0', 8);
  return to + point;
}

// ddd.ddd
char* putWithPoint(char* to, const Digits& digits, int point) {
  const char* const end = digits.store(to);
  char rest[24];
  std::memcpy(rest, to + point, 17);
  to[point] = '.';
  std::memcpy(to + point + 1, rest, 17);
  return to + (end - to) + 1;
}

template <class Bits>
char* putDecimal(char* to, const Decimal<Bits>& decimal) {
  const Digits digits = digitsOf(decimal.digits);
  const int point = digits.total + decimal.exponent;  // how many digits stand before the point
  const int exponentRoom = digits.count > 1 ? 5 : 4;  // of ".", "e-05" and the like
  if (point > 0 && point < digits.count) return putWithPoint(to, digits, point);
  if (point <= 0 && 2 - point <= exponentRoom) return putFraction(to, digits, -point);
  if (point > 0 && point <= digits.count + exponentRoom) return putInteger(to, digits, point);
  return putWithExponent(to, digits, point - 1);
}

char* putWord(char* to, std::string_view word) {
  std::memcpy(to, word.data(), word.size());
  return to + word.size();
}

template <class Real>
char* printReal(char* to, Real value) {
  using Layout = RealLayout<Real>;
  using Bits = typename Layout::Bits;
  constexpr int SIGN = sizeof(Bits) * 8 - 1;
  constexpr Bits INFINITY_BITS = Layout::EXPONENT_MASK << Layout::MANTISSA_BITS;
  const auto bits = std::bit_cast<Bits>(value);
  const Bits magnitude = bits & ~(Bits{1} << SIGN);
  *to = '-';
  to += bits >> SIGN;
  if (magnitude == 0) return putWord(to, "0");
  if (magnitude >= INFINITY_BITS) return putWord(to, magnitude == INFINITY_BITS ? "inf" : "nan");
  return putDecimal(to, shortestDecimal<Real>(magnitude));
}

}  // namespace

char* printNumber(char* to, float value) {
  return printReal(to, value);
}

char* printNumber(char* to, double value) {
  return printReal(to, value);
}

char* printRealWithPoint(char* to, double value) {
  char* const end = printNumber(to, value);
  const std::string_view text(to, static_cast<std::size_t>(end - to));
  if (text.find_first_of(".in") != std::string_view::npos) return end;
  char* const exponent = std::find(to, end, 'e');
  std::memmove(exponent + 2, exponent, static_cast<std::size_t>(end - exponent));
  std::memcpy(exponent, ".0", 2);
  return end + 2;
}

}  // namespace zn::numbers
