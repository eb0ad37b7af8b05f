#include "foundation/numbers/number_print.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "foundation/base/sanitizers.h"
#include "foundation/numbers/shortest_decimal.h"

namespace zn::numbers {

namespace {

constexpr std::uint32_t TEN_TO_8 = 100'000'000;
constexpr std::uint64_t ASCII_ZEROS = 0x3030303030303030;

/// Returns the eight decimal digits of a number below 10^8, one digit per byte. The first digit is
/// in the lowest byte. Splits the number into halves three times. In the second and third step, one
/// multiplication splits all parts: it divides them by 100 (10486 / 2^20 is about 1/100) or by 10
/// (103 / 2^10 is about 1/10). The quotients are exact for parts of four or two digits.
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

// These structures contain significant digits: the first digit, and one or two words of eight
// digits. The first digit of a number is not zero. The first digit of a word is in its lowest byte.
// Unused digits at the end are zeros. `count` returns the number of digits without the zeros at the
// end.

struct NineDigits {
  std::uint64_t first;
  std::uint64_t word;
  // The number of digits, including the zeros at the end of the number.
  int total;

  int count() const { return word == 0 ? 1 : 9 - std::countl_zero(word) / 8; }
  void store(char* to) const {
    to[0] = static_cast<char>('0' + first);
    storeWord(to + 1, word | ASCII_ZEROS);
  }
  /// Stores the digits after the first `count` digits. `count` must be from 1 to 8.
  void storeAfter(int count, char* to) const {
    storeWord(to, word >> (8 * (count - 1)) | ASCII_ZEROS);
  }
};

struct SeventeenDigits {
  std::uint64_t first;
  std::uint64_t words[2];
  int total;

  int count() const {
    if (words[1] != 0) return 17 - std::countl_zero(words[1]) / 8;
    return words[0] == 0 ? 1 : 9 - std::countl_zero(words[0]) / 8;
  }
  void store(char* to) const {
    to[0] = static_cast<char>('0' + first);
    storeWord(to + 1, words[0] | ASCII_ZEROS);
    storeWord(to + 9, words[1] | ASCII_ZEROS);
  }
  /// Stores the digits after the first `count` digits. `count` must be from 1 to 16.
  VSA_WRAPS_AROUND void storeAfter(int count, char* to) const {
    const int bits = 8 * ((count - 1) % 8);
    const std::uint64_t next = count > 8 ? words[1] : words[0];
    const std::uint64_t last = count > 8 ? 0 : words[1];
    const std::uint64_t carried = bits == 0 ? 0 : last << (64 - bits);
    storeWord(to, next >> bits | carried | ASCII_ZEROS);
    storeWord(to + 8, last >> bits | ASCII_ZEROS);
  }
};

/// Returns the digits of a number below 10^9 that is not 0. Has no branches, because it is
/// unpredictable whether a number has nine digits. Inlining saves 7 % of the time of the benchmark
/// write/double_list.
[[gnu::always_inline]] inline NineDigits nineDigits(std::uint32_t number) {
  const std::uint32_t upper = number / TEN_TO_8;
  const std::uint64_t word = eightDigits(number - upper * TEN_TO_8);
  const std::uint64_t hasEight = upper == 0 ? ~std::uint64_t{0} : 0;
  const int zeros = static_cast<int>(static_cast<unsigned>(std::countr_zero(word) / 8) & hasEight);
  const std::uint64_t digits = word >> (8 * zeros);
  return {upper | (digits & 0xFF & hasEight), digits >> (8 & hasEight),
          8 - zeros + (upper == 0 ? 0 : 1)};
}

/// Returns the digits of a number from 10^9 to 10^17 - 1.
VSA_WRAPS_AROUND SeventeenDigits seventeenDigits(std::uint64_t number) {
  const std::uint64_t upper = number / TEN_TO_8;
  const std::uint64_t last = eightDigits(static_cast<std::uint32_t>(number - upper * TEN_TO_8));
  const NineDigits front = nineDigits(static_cast<std::uint32_t>(upper));
  // Shifts the last word, so that its digits follow the digits of `front`.
  const int bits = 8 * (9 - front.total);
  if (bits == 0) return {front.first, {front.word, last}, 17};
  return {front.first, {front.word | last << (64 - bits), last >> bits}, front.total + 8};
}

// Writes the form d.dddex, or dex for a single digit. The exponent x may be negative.
template <class Digits>
char* putWithExponent(char* to, const Digits& digits, int count, int exponent) {
  digits.store(to + 1);
  to[0] = to[1];
  to[1] = '.';
  char* at = to + (count > 1 ? count + 1 : 1);
  *at++ = 'e';
  return std::to_chars(at, at + 5, exponent).ptr;
}

// Writes the form ddd000.
template <class Digits>
char* putInteger(char* to, const Digits& digits, int count, int point) {
  digits.store(to);
  std::memset(to + count, '0', 8);
  return to + point;
}

// Writes the form ddd.ddd or 0.000ddd. Uses masks instead of a branch. In a list that contains
// reals above and below 1, the branch would be unpredictable. A double of 8 digits takes 27 ns with
// the masks and 29 ns with the branch. The benchmark is "written double lists" of ./dev bench
// --peers.
template <class Digits>
char* putWithPoint(char* to, const Digits& digits, int count, int point) {
  const int isBelowOne = point <= 0 ? 1 : 0;
  const int below = 0 - isBelowOne;
  const int integerDigits = (point & ~below) | isBelowOne;
  const int firstDigit = (2 - point) & below;
  const int pointWidth = 1 - isBelowOne + firstDigit;
  std::memcpy(to, "0.000000", 8);  // NOLINT(bugprone-not-null-terminated-result): no string
  digits.store(to + firstDigit);
  to[integerDigits] = '.';
  // If the real is below 1, this call stores the same digits in the same place again.
  digits.storeAfter(integerDigits, to + pointWidth + integerDigits);
  return to + pointWidth + count;
}

template <class Digits>
char* putDigits(char* to, const Digits& digits, int exponent) {
  const int count = digits.count();
  const int point = digits.total + exponent;    // Digits before the point, if it is positive.
  const int exponentWidth = count > 1 ? 5 : 4;  // The length of ".e-05" or "e-05".
  const bool hasPoint = (point < count) & (2 - point <= exponentWidth);
  if (hasPoint) return putWithPoint(to, digits, count, point);
  if (point > 0 && point <= count + exponentWidth) return putInteger(to, digits, count, point);
  return putWithExponent(to, digits, count, point - 1);
}

char* putDecimal(char* to, const Decimal<std::uint32_t>& decimal) {
  return putDigits(to, nineDigits(decimal.digits), decimal.exponent);
}

// Writes the digits of a double. A decimal of 10 to 17 digits that ends in eight zeros takes the
// faster path for nine digits. Most doubles with few significant digits have such a decimal. This
// saves 11 % of the time of the benchmark write/double_list.
char* putDecimal(char* to, const Decimal<std::uint64_t>& decimal) {
  if (decimal.digits < 10 * std::uint64_t{TEN_TO_8}) {
    return putDigits(to, nineDigits(static_cast<std::uint32_t>(decimal.digits)), decimal.exponent);
  }
  const std::uint64_t upper = decimal.digits / TEN_TO_8;
  if (upper * TEN_TO_8 == decimal.digits) {
    return putDigits(to, nineDigits(static_cast<std::uint32_t>(upper)), decimal.exponent + 8);
  }
  return putDigits(to, seventeenDigits(decimal.digits), decimal.exponent);
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
  std::memcpy(exponent, ".0", 2);  // NOLINT(bugprone-not-null-terminated-result): no string
  return end + 2;
}

}  // namespace zn::numbers
