// Surveys of the number conversions. Their texts are generated, because there are too many for a
// file. Most surveys read each text as a scalar by realFromText() and as a number of a list by
// readNumberRun(), and compare the results bit for bit. The two surveys of printed numbers compare
// texts and read nothing.
#pragma once

#include <cstdint>

namespace vsa_tests {

/// The result of a survey. The first 20 mismatches are printed, too.
struct Survey {
  std::uint64_t texts = 0;
  std::uint64_t mismatches = 0;

  void add(const Survey& other) {
    texts += other.texts;
    mismatches += other.mismatches;
  }
};

/// Reads the floats whose bits are `first`, `first + step` and so on, below `end`. `end` is at most
/// 2^32. Each float is written in its shortest form and must be read back as the same bits. A NaN
/// must be read back as the quiet NaN with its sign.
Survey surveyFloats(std::uint64_t first, std::uint64_t end, std::uint64_t step);

/// Does the same as surveyFloats() for `count` random doubles. The same seed gives the same
/// doubles.
Survey surveyDoubles(std::uint64_t count, std::uint64_t seed);

/// These two surveys write the floats of surveyFloats() and the doubles of surveyDoubles() in the
/// form in which the writer prints them. The sign, the digits and the exponent must be those of
/// std::to_chars, and the text must not be longer than that of std::to_chars. For infinities and
/// NaNs, both texts must be equal.
Survey surveyPrintedFloats(std::uint64_t first, std::uint64_t end, std::uint64_t step);
Survey surveyPrintedDoubles(std::uint64_t count, std::uint64_t seed);

/// Reads `count` decimal texts, each as a double and as a float, and compares the results with
/// MPFR. The texts are hard to round. The same seed gives the same texts.
Survey surveyHardDecimals(std::uint64_t count, std::uint64_t seed);

}  // namespace vsa_tests
