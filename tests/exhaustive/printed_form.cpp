// Surveys of the form in which the writer prints reals. The sign, the digits and the exponent must
// be those of std::to_chars, and the text must not be longer than that of std::to_chars. For
// infinities and NaNs, both texts must be equal.
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string_view>

#include "foundation/numbers/number_print.h"
#include "tests/exhaustive/mismatch.h"
#include "tests/exhaustive/survey.h"

namespace vsa_tests {

namespace {

/// The digits of a number without its sign and without zeros at both ends, and the exponent of the
/// last digit.
struct Printed {
  char digits[40];
  int count = 0;
  int exponent = 0;

  explicit Printed(std::string_view text) {
    bool hasPoint = false;
    std::size_t i = text.starts_with('-') ? 1 : 0;
    for (; i < text.size() && text[i] != 'e'; ++i) {
      if (text[i] == '.') {
        hasPoint = true;
        continue;
      }
      if (count > 0 || text[i] != '0') digits[count++] = text[i];
      exponent -= hasPoint ? 1 : 0;
    }
    if (i < text.size()) exponent += std::atoi(text.data() + i + 1);
    for (; count > 0 && digits[count - 1] == '0'; --count) ++exponent;
  }

  friend bool operator==(const Printed& a, const Printed& b) {
    return a.exponent == b.exponent &&
           std::string_view(a.digits, static_cast<std::size_t>(a.count)) ==
               std::string_view(b.digits, static_cast<std::size_t>(b.count));
  }
};

template <class Real>
void check(Real value, Survey& survey) {
  char own[zn::numbers::PRINT_CAPACITY + 1], scientific[64], plain[64];
  char* const end = zn::numbers::printNumber(own, value);
  *end = '\0';
  *std::to_chars(scientific, scientific + 63, value, std::chars_format::scientific).ptr = '\0';
  const auto plainEnd = std::to_chars(plain, plain + 63, value).ptr;
  const std::string_view text(own, static_cast<std::size_t>(end - own));
  ++survey.texts;
  const bool isFinite = value - value == 0;
  const bool isSame = isFinite ? text.starts_with('-') == std::signbit(value) &&
                                     Printed(text) == Printed(std::string_view(scientific))
                               : text == std::string_view(scientific);
  if (!isSame || end - own > plainEnd - plain) mismatch(survey, text, "printed");
}

}  // namespace

Survey surveyPrintedFloats(std::uint64_t first, std::uint64_t end, std::uint64_t step) {
  Survey survey;
  for (std::uint64_t bits = first; bits < end; bits += step) {
    check(std::bit_cast<float>(static_cast<std::uint32_t>(bits)), survey);
  }
  return survey;
}

Survey surveyPrintedDoubles(std::uint64_t count, std::uint64_t seed) {
  Survey survey;
  std::mt19937_64 random(seed);
  for (std::uint64_t i = 0; i < count; ++i) check(std::bit_cast<double>(random()), survey);
  return survey;
}

}  // namespace vsa_tests
